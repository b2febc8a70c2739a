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

NewsStep StepAfterLook(const EditedPlan& edited, const HostCalls::Result<GetPlanDetailResponse>& now) {
  const SaveConflict found = ConflictOf(now, edited.revision);
  const bool is_answer = now.ok || found == SaveConflict::Deleted;
  const bool is_newer = found == SaveConflict::ChangedElsewhere && now.response.revision != edited.said_revision;
  if (!is_answer || (found == edited.said && !is_newer)) {
    return NewsStep::Nothing;
  }
  switch (found) {
    case SaveConflict::ChangedElsewhere:
      return NewsStep::SayChanged;
    case SaveConflict::Deleted:
      return NewsStep::SayDeleted;
    case SaveConflict::None:
      break;
  }
  return NewsStep::TakeBack;
}

}  // namespace TarnPlanView
