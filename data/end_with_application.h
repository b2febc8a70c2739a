#pragma once

namespace TarnPlanView {

/// For what must not outlive the application object, wait or icon: when a host has not ended the plug-in by then, that
/// is done as the last thing before the object goes. Any number of times. Thread: GUI.
void ReleaseWithTheApplication();

}  // namespace TarnPlanView
