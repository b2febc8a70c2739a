#pragma once

#include <QFrame>

class QAction;
class QLabel;
class QPushButton;

namespace TarnClient {

/// Says in a window that the desk is locked and by whom, with the button to unlock it. Thread: GUI.
class CLockBar : public QFrame {
  Q_OBJECT
 public:
  /// The button triggers the action and names its key.
  CLockBar(QAction* unlock, QWidget* parent);

  void ShowText(const QString& text);
  QPushButton* Button() const { return button_; }

 private:
  QLabel* text_ = nullptr;
  QPushButton* button_ = nullptr;
};

}  // namespace TarnClient
