#include "log_in/lock_filter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <utility>

namespace TarnClient {

CLockFilter::CLockFilter(PlaceOf place_of, IsOn is_on, QObject* parent)
    : QObject(parent), place_of_(std::move(place_of)), is_on_(std::move(is_on)) {
  qApp->installEventFilter(this);
}

CLockFilter::~CLockFilter() = default;

// What is on a keyboard beside the keys to type and to command with.
bool CLockFilter::IsIdle(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Print:
    case Qt::Key_unknown:
      return true;
    default:
      return key >= Qt::Key_Back && key <= Qt::Key_MicVolumeDown;
  }
}

DeskInput CLockFilter::InputOf(const QKeyEvent& key) {
  if (IsIdle(key.key())) {
    return DeskInput::IdleKey;
  }
  const bool is_plain = (key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == Qt::NoModifier;
  switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return is_plain ? DeskInput::FocusKey : DeskInput::Other;
    default:
      break;
  }
  if (key.modifiers() & ~Qt::KeypadModifier) {
    return DeskInput::Other;
  }
  switch (key.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return DeskInput::StepKey;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return DeskInput::PlayKey;
    case Qt::Key_Space:
      return DeskInput::HoldKey;
    default:
      return DeskInput::Other;
  }
}

bool CLockFilter::Refuses(const QWidget* target, QEvent* event) const {
  const auto refuses = [&](DeskInput input) { return !WorksWhileLocked(place_of_(target), input); };
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
      const bool is_left = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
      return refuses(is_left ? DeskInput::Click : DeskInput::Other);
    }
    case QEvent::MouseMove:
      return static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton && refuses(DeskInput::Drag);
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return refuses(DeskInput::Drag);
    case QEvent::Wheel:
      return refuses(DeskInput::Scroll);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return refuses(InputOf(*static_cast<QKeyEvent*>(event)));
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TabletPress:
    case QEvent::TouchBegin:
      return refuses(DeskInput::Other);
    case QEvent::Close:  // not of a tip, and not by the end of the desktop's session
      return target->windowType() == Qt::Window && !qApp->isSavingSession() && refuses(DeskInput::Other);
    default:
      return false;
  }
}

// A click on a row may open its menu, which would take all input and be refused it.
void CLockFilter::ClosePopup(QWidget* window) const {
  if (window->windowType() == Qt::Popup && place_of_(window) != DeskPlace::LockSign) {
    QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
  }
}

bool CLockFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Shortcut) {
    const auto* of = qobject_cast<QWidget*>(watched);
    const bool is_let_through = is_on_(watched) || (of && place_of_(of) == DeskPlace::LockSign);
    return !is_let_through;
  }
  if (event->type() == QEvent::Show && watched->isWidgetType()) {
    ClosePopup(static_cast<QWidget*>(watched));
  }
  if (!watched->isWidgetType() || !Refuses(static_cast<QWidget*>(watched), event)) {
    return false;
  }
  const bool is_key = event->type() == QEvent::KeyPress && !IsIdle(static_cast<QKeyEvent*>(event)->key());
  if (is_key || event->type() == QEvent::MouseButtonPress) {
    Q_EMIT SignalRefused(static_cast<QWidget*>(watched)->window());
  }
  event->ignore();  // a window that was to be closed stays
  return true;
}

}  // namespace TarnClient
