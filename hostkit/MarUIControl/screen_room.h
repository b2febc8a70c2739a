#pragma once

#include <QRect>

class QScreen;

namespace MarUIControl {

/// What windows may cover of the screen that holds `point`; of `otherwise` when none does. Thread: GUI.
QRect RoomAround(const QPoint& point, const QScreen* otherwise);

/// `place` moved as little as possible to lie in `room`; where it is too large its top left corner does.
QRect MovedInto(const QRect& room, const QRect& place);

}  // namespace MarUIControl
