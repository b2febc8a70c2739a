#pragma once

#include <QRect>
#include <QVector>

namespace TarnClient {

/// Where a window opens that stood at `remembered` (without its frame), on screens with this room, the main one first:
/// just there when all of it can be seen, else within the screen that shows most of it, or the main one.
QRect WindowPlaceOn(const QVector<QRect>& rooms, const QRect& remembered);

}  // namespace TarnClient
