#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>

namespace TarnPlanView {

/// Where a plan or group stands, as far as the host says. A plain value, made by blocking calls.
struct PlanWay {
  QStringList groups;    // codes of the groups above, from the root down; empty when it was not found
  bool is_gone = false;  // the host said that there is no such plan or group; not found alone does not mean so
  QString error;         // the host's text of the last call that failed
};

/// Looks for a plan or group below the roots of both families; `type` is a resource type. No call of the host names the
/// groups above a group, so all groups are read in the worst case: blocks. Thread: any but GUI.
PlanWay FindPlanWay(int32_t type, const std::string& code);

}  // namespace TarnPlanView
