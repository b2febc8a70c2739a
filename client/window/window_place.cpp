#include "window/window_place.h"

#include <QRegion>
#include <algorithm>

#include "window/window_size.h"

namespace TarnClient {

namespace {

qint64 AreaOf(const QRect& rect) {
  return qint64(rect.width()) * rect.height();
}

// The frame's width is halved by its two sides; its height is the title's but for the lower edge.
QRect WithoutFrame(const QRect& room) {
  const int side = kWindowFrame.width() / 2;
  return room.adjusted(side, kWindowFrame.height() - side, -side, -side);
}

int Nearest(int wanted, int least, int most) {
  return std::max(least, std::min(wanted, most));
}

}  // namespace

QRect WindowPlaceOn(const QVector<QRect>& rooms, const QRect& remembered) {
  QRegion unseen(remembered);
  for (const QRect& room : rooms) {
    unseen -= room;
  }
  if (rooms.isEmpty() || unseen.isEmpty()) {
    return remembered;
  }
  const auto room = std::max_element(rooms.begin(), rooms.end(), [&remembered](const QRect& a, const QRect& b) {
    return AreaOf(a & remembered) < AreaOf(b & remembered);
  });
  const QRect inside = WithoutFrame(*room);
  const QSize size = remembered.size().boundedTo(inside.size()).expandedTo(kLeastWindowSize);
  if (!room->intersects(remembered)) {
    const QPoint middle = inside.center() - QRect(QPoint(), size).center();
    return {QPoint(std::max(inside.left(), middle.x()), std::max(inside.top(), middle.y())), size};
  }
  return {QPoint(Nearest(remembered.left(), inside.left(), inside.right() + 1 - size.width()),
                 Nearest(remembered.top(), inside.top(), inside.bottom() + 1 - size.height())),
          size};
}

}  // namespace TarnClient
