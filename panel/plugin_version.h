#pragma once

#include <QString>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Version of the library that is loaded, "1.0.0". Thread: any.
TARNPLANVIEW_EXPORT QString PluginVersion();

/// Number of the binary interface, which the name of the library's file ends in: a program that was built against one
/// number runs with every library of that number that is not older. Thread: any.
TARNPLANVIEW_EXPORT int InterfaceVersion();

}  // namespace TarnPlanView
