#pragma once

#include "LyraPluginManager/view_plugin_protocol.h"

namespace view_plugin_protocol {

/// The request that stores a plan again just as it was read, and is refused when it was changed since.
inline UpdatePlanRequest UpdateRequestFrom(const GetPlanDetailResponse& plan) {
  UpdatePlanRequest request;
  request.plan_index_code = plan.index_code;
  request.plan_name = plan.name;
  request.index_type = plan.type;
  request.parent_index_code = plan.group_index_code;
  request.parent_name = plan.group_name;
  request.auto_play = plan.auto_run;
  request.begin_time = plan.start_time;
  request.end_time = plan.end_time;
  request.pages = plan.pages;
  request.thumbnail = plan.thumbnail;
  request.revision = plan.revision;
  return request;
}

}  // namespace view_plugin_protocol
