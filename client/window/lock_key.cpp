#include "window/lock_key.h"

#include <QApplication>
#include <QKeyEvent>

#include "log_in/log_in_dialog.h"
#include "window/desk_window.h"

namespace TarnClient {

namespace {

bool IsForWindows(const QWidget* widget) {
  const QWidget* window = widget->window();
  return qobject_cast<const CDeskWindow*>(window) || qobject_cast<const CLogInDialog*>(window);
}

}  // namespace

CLockKey::CLockKey(const QKeySequence& key, QObject* parent) : QObject(parent), key_(key) {
  qApp->installEventFilter(this);
}

bool CLockKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
    return false;
  }
  const auto* press = static_cast<QKeyEvent*>(event);
  const bool is_key = QKeySequence(press->key() | static_cast<int>(press->modifiers())) == key_;
  if (!is_key || IsForWindows(static_cast<QWidget*>(watched))) {
    return false;
  }
  QMetaObject::invokeMethod(this, &CLockKey::SignalPressed, Qt::QueuedConnection);
  return true;
}

}  // namespace TarnClient
