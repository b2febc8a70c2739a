#pragma once

#include <QStringList>
#include <cstdint>
#include <string>

namespace TarnPlanView {

/// Codes of the groups above a plan or group, from its root down; empty when there is no such plan or group. `type` is
/// a resource type. Asks the host for every group of both families in the worst case: blocks. Thread: any but GUI.
QStringList PlanWay(int32_t type, const std::string& code);

}  // namespace TarnPlanView
