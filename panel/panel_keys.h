#pragma once

#include <QList>

#include "MarUIControl/key_guide.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// All keys of the panel, of its tree and search and of the plan editor, for the host's list of keys; in the user's
/// language. Thread: GUI.
TARNPLANVIEW_EXPORT QList<MarUIControl::KeyEntry> PanelKeys();

}  // namespace TarnPlanView
