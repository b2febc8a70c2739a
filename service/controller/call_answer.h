#pragma once

#include <QString>

#include "LyraPluginManager/error_kind.h"

namespace TarnPlanView {

/// How one call of the controller ended.
struct CallAnswer {
  bool ok = false;
  QString text;                                         // the code of the plan or group, or why it failed, for the user
  int32_t kind = view_plugin_protocol::UnknownFailure;  // why it failed, an ErrorKind
  int32_t restorable_seconds = 0;                       // of a deletion: how long it can be taken back
  int32_t deleted_groups = -1, deleted_plans = -1;      // of a group's: what went with it; -1: the host does not say
};

/// Who shows the user why a call failed.
enum class FailureText { ByMessage, ByCaller };

}  // namespace TarnPlanView
