#include "window/window_place.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
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

constexpr QPoint kBeside(48, 48);  // so that the title of the window below can be seen

bool HoldsOne(const ScreenPlace& screen, const QVector<QRect>& windows) {
  return std::any_of(windows.begin(), windows.end(),
                     [&screen](const QRect& window) { return screen.place.contains(window.center()); });
}

int Nearest(int wanted, int least, int most) {
  return std::max(least, std::min(wanted, most));
}

}  // namespace

QVector<ScreenPlace> ScreensNow() {
  QVector<ScreenPlace> screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    screens.append({screen->name(), screen->geometry(), screen->availableGeometry()});
  }
  return screens;
}

QVector<QRect> RoomsOf(const QVector<ScreenPlace>& screens) {
  QVector<QRect> rooms;
  for (const ScreenPlace& screen : screens) {
    rooms.append(screen.room);
  }
  return rooms;
}

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

// Of screens with one name the place says which is which.
QRect FollowScreen(const QVector<ScreenPlace>& screens, const QRect& window, const ScreenPlace& was) {
  const ScreenPlace* found = nullptr;
  for (const ScreenPlace& screen : screens) {
    if (was.name.isEmpty() || screen.name != was.name) {
      continue;
    }
    if (!found || screen.place == was.place) {
      found = &screen;
    }
  }
  if (!found || was.place.isEmpty()) {
    return window;
  }
  return window.translated(found->place.topLeft() - was.place.topLeft());
}

WindowSpot SpotForWall(const QVector<ScreenPlace>& screens, const QVector<QRect>& windows) {
  for (const ScreenPlace& screen : screens) {
    if (!HoldsOne(screen, windows)) {
      QRect middle(QPoint(), WindowSizeFor(screen.room.size()));
      middle.moveCenter(screen.room.center());
      return {middle, true};
    }
  }
  const QRect last = windows.value(windows.size() - 1, QRect(QPoint(), kLeastWindowSize));
  return {WindowPlaceOn(RoomsOf(screens), last.translated(kBeside)), false};
}

}  // namespace TarnClient
