#include "plan_standing.h"

namespace TarnPlanView {

SaveConflict PlanStanding::Said() const {
  if (IsChanged()) {
    return SaveConflict::ChangedElsewhere;
  }
  if (kind == Kind::Deleted) {
    return SaveConflict::Deleted;
  }
  return SaveConflict::None;
}

ConflictNews NewsOf(PlanStanding::Kind kind, bool replaces_edits) {
  using Kind = PlanStanding::Kind;
  switch (kind) {
    case Kind::Loading:
      return ConflictNews::None;
    case Kind::NotLoaded:
      return ConflictNews::NotLoaded;
    case Kind::Refused:
      return ConflictNews::Refused;
    case Kind::Deleted:
      return ConflictNews::Deleted;
    case Kind::Changed:
      if (replaces_edits) {
        return ConflictNews::Newer;
      }
      return ConflictNews::Changed;
    case Kind::Same:
      break;
  }
  if (replaces_edits) {
    return ConflictNews::Theirs;
  }
  return ConflictNews::None;
}

}  // namespace TarnPlanView
