#pragma once

#include <QPoint>

class QWidget;

namespace TarnTest {

/// Drags with the mouse from a point of a widget to a point of the screen, as a hand would: pressed, moved until the
/// drag starts, moved on and released inside the drag's own event loop. Needs a display. False when no drag came.
bool DragWithMouse(QWidget* from, const QPoint& start, const QPoint& end_on_screen);

}  // namespace TarnTest
