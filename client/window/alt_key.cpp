#include "window/alt_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

namespace TarnClient {

CAltKey::CAltKey(QWidget* window) : QObject(window), window_(window) {
  qApp->installEventFilter(this);
}

bool CAltKey::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: {
      const auto* key = static_cast<QKeyEvent*>(event);
      alone_ = key->key() == Qt::Key_Alt && key->modifiers() == Qt::AltModifier;
      break;
    }
    case QEvent::KeyRelease: {
      const auto* key = static_cast<QKeyEvent*>(event);
      const bool tapped = std::exchange(alone_, false) && key->key() == Qt::Key_Alt && !key->isAutoRepeat();
      if (tapped && window_->isActiveWindow() && !QApplication::activePopupWidget()) {
        Q_EMIT SignalTapped();
      }
      break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::WindowDeactivate:
    case QEvent::ApplicationStateChange:
      alone_ = false;  // as for Alt+Tab, and for a window that is dragged with Alt
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace TarnClient
