#pragma once

#include <QObject>

class QWidget;

namespace TarnClient {

/// Hears when Alt is pressed and released by itself in a window, which opens its menu. Child of the window. Thread:
/// GUI.
class CAltKey : public QObject {
  Q_OBJECT
 public:
  explicit CAltKey(QWidget* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void SignalTapped();

 private:
  QWidget* const window_;
  bool alone_ = false;  // Alt is down, and nothing has happened since
};

}  // namespace TarnClient
