#include "help/help_desk.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "help/help_window.h"
#include "window/close_popups.h"

namespace TarnClient {

namespace {

// Frameless ones are pop-ups of their own making, which close when another window is activated.
bool ClosesWithoutActivation(const QWidget* active, const QWidget* window) {
  return active && active != window && !active->isModal() && active->windowFlags().testFlag(Qt::FramelessWindowHint);
}

}  // namespace

CHelpDesk::CHelpDesk(std::function<QList<MarUIControl::KeyEntry>()> keys, QWidget* window)
    : QObject(window), keys_(std::move(keys)), window_(window) {
  qApp->installEventFilter(this);
}

CHelpDesk::~CHelpDesk() {
  delete list_;
}

void CHelpDesk::Open() {
  if (list_ && list_->isActiveWindow()) {
    return;
  }
  delete list_;  // it may belong to another window
  QWidget* over = QApplication::activeWindow();
  if (QWidget* modal = QApplication::activeModalWidget()) {
    over = modal;
  }
  if (!over) {
    over = window_;
  }
  list_ = new CHelpWindow(keys_(), over);
  const bool is_quiet = ClosesWithoutActivation(over, window_);
  list_->setAttribute(Qt::WA_ShowWithoutActivating, is_quiet);
  list_->setWindowFlag(Qt::WindowDoesNotAcceptFocus, is_quiet);
  list_->show();
  if (!is_quiet) {
    list_->activateWindow();
  }
}

// A menu keeps all keys and clicks from the list, and the one that takes F1 is still in the middle of that.
void CHelpDesk::OpenOverMenus() {
  if (!QApplication::activePopupWidget()) {
    return Open();
  }
  if (CloseAllPopups()) {
    QMetaObject::invokeMethod(this, &CHelpDesk::Open, Qt::QueuedConnection);
  }
}

QDialog* CHelpDesk::Window() const {
  return list_;
}

bool CHelpDesk::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
    return QObject::eventFilter(watched, event);
  }
  const auto* press = static_cast<QKeyEvent*>(event);
  if (press->key() == Qt::Key_F1 && press->modifiers() == Qt::NoModifier && !press->isAutoRepeat()) {
    OpenOverMenus();
    return true;
  }
  const bool has_no_keys = list_ && list_->testAttribute(Qt::WA_ShowWithoutActivating) && !list_->isActiveWindow();
  if (press->key() == Qt::Key_Escape && has_no_keys) {
    list_->close();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace TarnClient
