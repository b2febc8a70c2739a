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

/// In words that name the plan or group; empty for no change, and for one without a name.
QString TextOf(PlanChange change, const QString& name);

}  // namespace TarnClient
