#pragma once

namespace MarUIControl {

/// Lets assistive technology know the controls that Qt has no role for. Does something on the first call only.
/// Thread: GUI.
void InstallControlAccessibility();

}  // namespace MarUIControl
