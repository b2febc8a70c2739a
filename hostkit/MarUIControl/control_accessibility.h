#pragma once

class QWidget;

namespace MarUIControl {

/// Lets assistive technology know the controls that Qt has no role for. Does something on the first call only.
/// Thread: GUI.
void InstallControlAccessibility();

/// Has `widget`, whose text has just come up, read out at once. Thread: GUI.
void AnnounceAlert(QWidget* widget);

}  // namespace MarUIControl
