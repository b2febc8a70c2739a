#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedWidget>

#include "TarnUIDataController/skin_color.h"
#include "wall/fetch_sign.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "wall/wall_drops.h"

// What the wall does with keys, drags and its own looks.
namespace TarnClient {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kFocusFrame = 2;

}  // namespace

void CLiveWall::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() & ~Qt::KeypadModifier) {
    QWidget::keyPressEvent(event);
    return;
  }
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_PageUp:
      return Turn(-1);
    case Qt::Key_Right:
    case Qt::Key_PageDown:
      return Turn(1);
    case Qt::Key_Space:
      return ToggleHold();
    case Qt::Key_Escape:
      if (IsShowing() && !window()->isFullScreen()) {
        return Q_EMIT SignalStopWanted();
      }
      break;  // the window may have something to take back that is not on the wall yet
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

void CLiveWall::AcceptDropsOf(const QString& station_id) {
  drops_->SetStation(station_id);
  setAcceptDrops(true);
}

// The window under the mouse is the one that the user means: its page stays.
void CLiveWall::dragEnterEvent(QDragEnterEvent* event) {
  drops_->Enter(event, stack_->geometry());
  StayFor(drop_hint_, event->isAccepted());
}

void CLiveWall::dragMoveEvent(QDragMoveEvent* event) {
  drops_->Move(event, stack_->geometry());
}

void CLiveWall::dragLeaveEvent(QDragLeaveEvent*) {
  drops_->Leave();
  StayFor(drop_hint_, false);
}

void CLiveWall::dropEvent(QDropEvent* event) {
  drops_->Drop(event);
  StayFor(drop_hint_, false);
}

void CLiveWall::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), SkinColor("background"));
  painter.fillRect(stack_->geometry(), SkinColor("wall"));
  if (hasFocus()) {
    painter.setPen(QPen(SkinColor("focus"), kFocusFrame));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void CLiveWall::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  RunTicker();
}

void CLiveWall::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fetch_sign_->Place(rect().adjusted(0, bar_->height(), 0, 0));
}

void CLiveWall::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  RunTicker();
}

}  // namespace TarnClient
