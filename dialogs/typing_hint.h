#pragma once

#include <QObject>

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
  bool shown_ = false;
};

}  // namespace TarnPlanView
