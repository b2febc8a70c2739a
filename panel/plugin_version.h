#pragma once

#include <QString>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Of the library that is loaded. Thread: any.
TARNPLANVIEW_EXPORT QString PluginVersion();

}  // namespace TarnPlanView
