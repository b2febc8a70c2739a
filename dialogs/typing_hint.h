#pragma once

#include <QObject>
#include <QString>
#include <optional>

class QLineEdit;

namespace TarnPlanView {

/// Says at a field for names what it does not take, when something was typed or pasted that it has not taken. Child of
/// the field, whose validator goes by TypedNamePattern(). Thread: GUI.
class CTypingHint : public QObject {
  Q_OBJECT
 public:
  explicit CTypingHint(QLineEdit* field);

 private:
  QString Text() const;
  void Show();
  void Hide();

  QLineEdit* const field_;
  std::optional<QString> described_;  // the field's own description, while the hint stands in its place
};

}  // namespace TarnPlanView
