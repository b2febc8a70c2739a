#pragma once

#include <QString>

#include "LyraPluginManager/error_kind.h"

namespace TarnPlanView {

/// How one call of the controller ended. A plain value.
struct CallAnswer {
  bool ok = false;  ///< The host has said yes. False, with nothing else set, for a call that was not sent.
  QString text;     ///< The code of the plan or group; or why it failed, for the user.
  int32_t kind = view_plugin_protocol::UnknownFailure;  ///< Why it failed, an ErrorKind.
  int32_t restorable_seconds = 0;  ///< Of a deletion: how long it can be taken back; 0: not at all.
  int32_t deleted_groups = -1;     ///< Of a group's deletion: groups that went with it; -1: the host does not say.
  int32_t deleted_plans = -1;      ///< Of a group's deletion: plans that went with it; -1: the host does not say.
};

/// Who shows the user why a call failed.
enum class FailureText {
  ByMessage,  ///< The controller, by signalShowMessage().
  ByCaller,   ///< The one who called, of what the answer says.
};

}  // namespace TarnPlanView
