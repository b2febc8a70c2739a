#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnPlanView {

/// Where a plan or group stands, as far as the host says. A plain value, made by blocking calls.
struct PlanWay {
  QStringList groups;  // codes of the groups above, from the root down; empty when it was not found
  QString error;       // the host's text of the last call that failed
  // What is stored now; asked for only when nothing was found.
  std::optional<view_plugin_protocol::ClienDefaultViewConfigRequest> default_view;
};

/// Looks for a plan or group; `type` is a resource type. Asks the host for every group of both families in the worst
/// case: blocks. Nothing found is no proof that it is gone, since a call may have failed: the host, which knows no
/// default view that was deleted, is asked for the stored one then. Thread: any but GUI.
PlanWay FindPlanWay(int32_t type, const std::string& code);

}  // namespace TarnPlanView
