#pragma once

#include <QDropEvent>
#include <QMouseEvent>
#include <QPoint>

/// Everything that the Qts this code is built on have under different names stands in this folder.
namespace TarnQt {

/// In the coordinates of the widget that got the event.
inline QPoint PlaceOf(const QDropEvent& event) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return event.position().toPoint();
#else
  return event.pos();
#endif
}

/// On the screen.
inline QPoint GlobalPlaceOf(const QMouseEvent& event) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return event.globalPosition().toPoint();
#else
  return event.globalPos();
#endif
}

}  // namespace TarnQt
