#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace TarnClient {

/// What stands on the empty wall: what has ended on it, what could not be played, or how to play something.
/// Its focus proxy gets the focus when the button goes. Thread: GUI.
class CWallHint : public QWidget {
  Q_OBJECT
 public:
  explicit CWallHint(QWidget* parent = nullptr);

  /// An empty text for none.
  void ShowNote(const QString& text);
  /// Without a text the hint how to play stands there.
  void ShowFailure(const QString& text, const QString& reason, bool may_try_again);

 Q_SIGNALS:
  void SignalTryAgain();

 private:
  QLabel *note_ = nullptr, *text_ = nullptr, *reason_ = nullptr;
  QPushButton* again_ = nullptr;
  QString failure_;
};

}  // namespace TarnClient
