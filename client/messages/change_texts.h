#pragma once

#include <QString>

namespace TarnClient {

/// What the user has just done, where the client knows more than that it was done.
/// Empty: the plan shows nothing.
enum class PlanChange {
  None,
  GroupAdded,
  PlanAdded,
  EmptyPlanAdded,
  GroupRenamed,
  PlanRenamed,
  PlanSaved,
  EmptyPlanSaved
};

/// In words that name the plan or group; empty for no change, and for one without a name. `place`: of a new one, the
/// groups around it; empty when that is not known.
QString TextOf(PlanChange change, const QString& name, const QString& place = {});

}  // namespace TarnClient
