#pragma once

#include <QFrame>
#include <QString>

class QDateTime;
class QLabel;

namespace TarnHost {
enum class StoreTrouble;
}

namespace TarnClient {

/// Names the plan store in the status line, or what is wrong with it while that lasts. Thread: GUI.
class CStoreState : public QFrame {
  Q_OBJECT
 public:
  explicit CStoreState(const QString& store_url, QWidget* parent);

  /// Whether a trouble that becomes another has lasted since the first.
  static bool IsOneOutage(TarnHost::StoreTrouble before, TarnHost::StoreTrouble now);
  /// `since`: when the store last was as it should be. `line` says more, as the tool tip; kNone is the end.
  void ShowTrouble(TarnHost::StoreTrouble trouble, const QDateTime& since, const QString& line);
  bool HasTrouble() const { return !trouble_.isEmpty(); }
  /// What is wrong, for the user; empty for nothing.
  const QString& Trouble() const { return trouble_; }

 private:
  void ShowText(const QString& text, const QString& more, bool is_trouble);

  const QString name_;
  QString trouble_;
  QLabel *mark_ = nullptr, *text_ = nullptr;
};

}  // namespace TarnClient
