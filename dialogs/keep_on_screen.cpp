#include "keep_on_screen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace TarnPlanView {

void KeepOnScreen(QWidget* window, const QPoint& anchor) {
  const QScreen* screen = QGuiApplication::screenAt(anchor);
  const QRect room = (screen ? screen : window->screen())->availableGeometry();
  const QPoint last = room.bottomRight() - window->rect().bottomRight();
  // The upper left corner wins where the window is larger than the screen.
  const QPoint place(qMax(room.left(), qMin(window->x(), last.x())), qMax(room.top(), qMin(window->y(), last.y())));
  if (place != window->pos()) {
    window->move(place);
  }
}

}  // namespace TarnPlanView
