#include "MarUIControl/screen_room.h"

#include <QGuiApplication>
#include <QScreen>

namespace MarUIControl {

QRect RoomAround(const QPoint& point, const QScreen* otherwise) {
  if (const QScreen* screen = QGuiApplication::screenAt(point)) {
    return screen->availableGeometry();
  }
  return otherwise->availableGeometry();
}

QRect MovedInto(const QRect& room, const QRect& place) {
  const int left = qMin(place.left(), room.right() - place.width() + 1);
  const int top = qMin(place.top(), room.bottom() - place.height() + 1);
  return QRect(QPoint(qMax(room.left(), left), qMax(room.top(), top)), place.size());
}

}  // namespace MarUIControl
