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

/// A plan in the editor that is the host's, and what is said of it there.
struct EditedPlan {
  int64_t revision = 0;  // what a save would go over
  SaveConflict said = SaveConflict::None;
  int64_t said_revision = 0;  // of the host's plan
};

enum class NewsStep { Nothing, SayChanged, SayDeleted, TakeBack };

/// What is to be said after a look at the host's plan. No answer is no news. A deletion that was undone is taken back.
NewsStep StepAfterLook(const EditedPlan& edited,
                       const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now);

}  // namespace TarnPlanView
