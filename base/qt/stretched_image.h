#pragma once

#include <QImage>
#include <QPainter>
#include <algorithm>

namespace TarnQt {

/// Draws a part of the image over all of `room`.
///
/// Qt 6 hands what has more than 95 rows to threads and waits for them, also where decoding keeps the processors busy;
/// so it is given bands that it draws itself. Their seams do not show: every pixel is the same as in one piece.
inline void DrawStretched(QPainter* painter, const QRect& room, const QImage& image, const QRectF& part) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  constexpr int kDeviceRows = 64;
  const int rows = std::max(1, static_cast<int>(kDeviceRows / painter->device()->devicePixelRatioF()));
  for (int top = room.top(); top <= room.bottom(); top += rows) {
    painter->save();
    painter->setClipRect(QRect(room.left(), top, room.width(), rows), Qt::IntersectClip);
    painter->drawImage(room, image, part);
    painter->restore();
  }
#else
  painter->drawImage(room, image, part);
#endif
}

}  // namespace TarnQt
