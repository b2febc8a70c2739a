#pragma once

class QWidget;

namespace MarUIControl {

/// Says to readers on Linux what `widget` says of itself: an alert itself is not handed on to them, they speak what
/// comes up as a notification. Each is an object of its own, so that none is lost behind the next. Thread: GUI.
void Announce(QWidget* widget);

}  // namespace MarUIControl
