#pragma once

class QPoint;
class QWidget;

namespace TarnPlanView {

/// Moves a window as little as needed to stand wholly on the screen that shows `anchor`. Thread: GUI.
void KeepOnScreen(QWidget* window, const QPoint& anchor);

}  // namespace TarnPlanView
