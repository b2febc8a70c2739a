#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <string>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// One turn of a group cycle: which plan comes next, and its pages. A plain value, made by blocking calls.
struct CycleTurn {
  enum class Outcome {
    Fetched,
    Empty,   // the group has no plans
    Failed,  // the service does not list the group, or lists plans and hands out none
  };
  Outcome outcome = Outcome::Failed;
  QVector<std::string> plans;  // codes, in the order of the tree's rows
  int position = -1;           // of `plan` in `plans`; -1 unless it was fetched
  view_plugin_protocol::GetPlanDetailResponse plan;
  QStringList skipped;                                        // names of the plans that could not be fetched
  QString error;                                              // the service's text of the last failure
  int32_t error_kind = view_plugin_protocol::UnknownFailure;  // why plans were not listed, an ErrorKind

  /// The turn that is `step` (1, -1, or 0 for the same plan once more) away from `last`, which is a default one at the
  /// beginning. When the plan of the last turn is gone, its neighbour of then comes. Thread: any but GUI, since it
  /// blocks.
  static CycleTurn Next(const std::string& group_code, const CycleTurn& last, int step = 1);
};

}  // namespace TarnClient
