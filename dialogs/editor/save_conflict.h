#pragma once

#include <cstdint>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/result.h"

namespace TarnPlanView {

/// What stands between a refused update and the plan as the host has it.
enum class SaveConflict {
  None,  // it failed for another reason, or the host does not say
  ChangedElsewhere,
  Deleted,
};

/// Whether a refusal of this ErrorKind may mean that the plan was changed or deleted. Then the plan itself has to be
/// asked for: the same kinds are given for its group.
bool MayBeConflict(int32_t kind);

/// `now`: the answer to that; `revision`: the one that was refused.
SaveConflict ConflictOf(const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now, int64_t revision);

}  // namespace TarnPlanView
