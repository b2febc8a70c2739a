#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// One turn of a group cycle: which plan comes next, and its pages. A plain value, made by blocking calls.
struct CycleTurn {
  bool group_found = false;
  QVector<std::string> plans;  // codes: those of the group, then those of its subgroups, in the service's order
  int position = -1;           // of `plan` in `plans`; -1 when none could be fetched
  view_plugin_protocol::GetPlanDetailResponse plan;
  QStringList skipped;    // names of the plans that could not be fetched
  QString error;          // the service's text of the last failure
  bool may_pass = false;  // no plan came for a reason that may pass: the service lists nothing at all at present, or
                          // lists plans and hands out none

  /// The turn that is `step` (1 or -1) away from `last`, which is a default one at the beginning. When the plan of the
  /// last turn is gone, its neighbour of then comes. Thread: any but GUI, since it blocks.
  static CycleTurn Next(const std::string& group_code, const CycleTurn& last, int step = 1);
};

/// Name of a group of either family; empty when there is none, or the service does not answer. Asks for all groups in
/// the worst case. Thread: any but GUI, since it blocks.
QString FindGroupName(const std::string& group_code);

}  // namespace TarnClient
