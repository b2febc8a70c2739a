#include "save_conflict.h"

#include "LyraPluginManager/error_kind.h"

namespace TarnPlanView {

using namespace view_plugin_protocol;

bool MayBeConflict(int32_t kind) {
  return kind == Gone || kind == Changed || kind == UnknownFailure;
}

SaveConflict ConflictOf(const HostCalls::Result<GetPlanDetailResponse>& now, int64_t revision) {
  if (now.ok) {
    return now.response.revision > revision ? SaveConflict::ChangedElsewhere : SaveConflict::None;
  }
  return now.response.error_kind == Gone ? SaveConflict::Deleted : SaveConflict::None;
}

}  // namespace TarnPlanView
