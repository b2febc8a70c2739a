#pragma once

#include <QRect>
#include <QString>
#include <QVector>

namespace TarnClient {

/// A screen among the others, and its part that windows may take.
struct ScreenPlace {
  QString name;
  QRect place, room = {};
};
/// The main one first.
QVector<ScreenPlace> ScreensNow();
QVector<QRect> RoomsOf(const QVector<ScreenPlace>& screens);

/// Where a window opens that stood at `remembered` (without its frame), on screens with this room, the main one first:
/// just there when all of it can be seen, else within the screen that shows most of it, or the main one.
QRect WindowPlaceOn(const QVector<QRect>& rooms, const QRect& remembered);

/// A window goes with its screen, known by its name, when that stands elsewhere by now.
QRect FollowScreen(const QVector<ScreenPlace>& screens, const QRect& window, const ScreenPlace& was);

struct WindowSpot {
  QRect window;
  bool is_maximized = false;
};
/// Where one more wall opens beside these windows: all over a screen that has none, else beside the last of them.
WindowSpot SpotForWall(const QVector<ScreenPlace>& screens, const QVector<QRect>& windows);

}  // namespace TarnClient
