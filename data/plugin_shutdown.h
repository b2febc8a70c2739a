#pragma once

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Waits for the calls of the host that are under way, destroys the plug-in's singletons (facade, data manager with its
/// models, automatic plan, configuration) and drops cached icons. Called once at shut-down, after UninitManager(),
/// after the panels are gone and the service answers every call at once, and before the host's singletons and the
/// application object go. Thread: GUI.
TARNPLANVIEW_EXPORT void ReleasePlugin();

}  // namespace TarnPlanView
