#pragma once

#include <QString>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "save_conflict.h"

namespace TarnPlanView {

/// How the plan in the editor stands to the one that the host has.
struct PlanStanding {
  enum class Kind {
    Same,       // as it was loaded, taken over or saved last; or a new plan
    Loading,    // `awaited` was asked for
    NotLoaded,  // `awaited` could not be fetched
    Changed,    // changed elsewhere while it is being edited
    Refused,    // changed elsewhere, so that a save was refused
    Deleted,
  };

  Kind kind = Kind::Same;
  QString awaited;                                          // code of a plan that is not here yet
  view_plugin_protocol::GetPlanDetailResponse theirs = {};  // the host's plan or why there is none; what was taken over

  bool IsAwaited() const { return kind == Kind::Loading || kind == Kind::NotLoaded; }
  bool IsChanged() const { return kind == Kind::Changed || kind == Kind::Refused; }
  /// What the user was shown of the host's plan.
  SaveConflict Said() const;
};

/// What the conflict bar says of it.
enum class ConflictNews { None, NotLoaded, Changed, Refused, Deleted, Theirs, Newer };

/// `replaces_edits`: edits of the user's are out of sight, because their version is shown.
ConflictNews NewsOf(PlanStanding::Kind kind, bool replaces_edits);

}  // namespace TarnPlanView
