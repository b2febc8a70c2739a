#pragma once

#include <QList>
#include <QMetaType>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

// Records of the plan service. Strings are UTF-8; an index code names a group or plan, or a root: "-1" public, "-2" the
// user's own, "-4" received. A `type` is a family, as in PlanGroup, where nothing else is said. A response beyond its
// header is meaningful only when the call returned true.
namespace view_plugin_protocol {

struct ResponseHeader {
  std::string error_info;                    // for the user, after a call that returned false
  int32_t error_kind = 0;                    // an ErrorKind, after a call that returned false
  std::vector<std::string> error_arguments;  // what error_info names, in its order: a plan, a limit
};

struct PlanGroup {
  std::string name, parent_index_code, index_code;
  int32_t type = 0;  // family: 0 public, 1 the user's own, 2 received in common
};

/// A plan without its pages, as lists show it.
struct PlanBasicInfo {
  std::string index_code, name, group_index_code;
  int32_t type = 0;
  int32_t split_type = 1;  // 1, 2, 4, 8 stand for 1, 4, 9, 16 windows
  int32_t page_count = 1;
  bool auto_run = false;
};

struct PlanWindow {
  int32_t window_no = 0;     // from 1, row by row
  int32_t content_kind = 0;  // 0 none given, 1 camera; see ContentKind in plan_rules/window_content.h
  std::string resource_code, resource_name;
  int32_t stream_type = 0;  // 0 main, 1 sub
  int32_t preset_no = 0;    // 0: none
  std::string extra = {};   // what a newer version keeps here, as a JSON object: handed back with the window
};

struct PlanPage {
  int32_t page_no = 0;  // from 1
  std::string name;
  int32_t split_type = 1;      // as in PlanBasicInfo
  int32_t dwell_seconds = 10;  // how long it stays before the next one
  std::list<PlanWindow> windows;
  std::string extra = {};  // likewise
};

struct PlanItem {
  int32_t page_no = 0;
  PlanWindow window;
};

/// One hit of a search.
struct SearchedPlan {
  std::string index_code, name, group_index_code, group_name;
  int32_t type = 0;
  std::vector<std::string> groups_above = {};  // names, the outermost first, without the root; empty: not known
  std::string shown_camera = {};               // the camera by which it was found; empty: found by its name
  int32_t page_count = 1;
  bool auto_run = false;
};

/// What is known of a row of the plan tree.
struct TarnPlanViewInfo {
  std::string index_code, name, group_index_code, group_name;
  int32_t type = 0;
  bool is_group = false, playing = false;
};

struct ViewObserverInfo {
  int32_t resource_type = 0;  // a ResourceData::ResourceType
  std::string index_code;
  int32_t action = 0;  // 1 registers, 0 unregisters
};

struct GetPlanGroupsRequest {
  std::string parent_index_code;
  int32_t node_type = 0;
};
struct GetPlanGroupsResponse : ResponseHeader {
  QList<PlanGroup> groups;
};

struct GetPlansInGroupRequest {
  std::string group_index_code;
  int32_t node_type = 0;
};
struct GetPlansInGroupResponse : ResponseHeader {
  QList<PlanBasicInfo> plans;
};

struct AddPlanGroupRequest {
  std::string name, parent_index_code;
  int32_t kind = 0;   // the family
  bool flag = false;  // below received plans
};
struct AddPlanGroupResponse : ResponseHeader {
  std::string index_code;
};

struct UpdatePlanGroupRequest {
  std::string index_code, name;
  bool flag = false;  // a group of received plans
};
struct UpdatePlanGroupResponse : ResponseHeader {};

struct DeletePlanGroupRequest {
  std::string index_code, name;
  int32_t type = 0;
};
struct DeletePlanGroupResponse : ResponseHeader {
  int32_t restorable_seconds = 0;                   // how long RestoreDeleted() takes it back; 0: not at all
  int32_t deleted_groups = -1, deleted_plans = -1;  // that went with it, on all levels; -1: the host does not say
};

struct CountBelowGroupRequest {
  std::string index_code;
};
struct CountBelowGroupResponse : ResponseHeader {
  int32_t groups = 0, plans = 0;  // on all levels below, as far as the user sees them
};

struct AddPlanRequest {
  std::string plan_name;
  int32_t index_type = 0;  // family
  std::string parent_index_code, parent_name;
  bool auto_play = false;
  std::string begin_time, end_time;  // "HH:mm:ss"
  std::list<PlanPage> pages;
  std::string thumbnail;  // PNG bytes
};
struct AddPlanResponse : ResponseHeader {
  std::string index_code;
};

struct UpdatePlanRequest : AddPlanRequest {
  std::string plan_index_code;
  int64_t revision = 0;  // 0: not checked
};
struct UpdatePlanResponse : ResponseHeader {};

// The service's own spelling.
struct DeletePlanResquest {
  std::string plan_index_code, plan_name, group_index_code, group_name, reserved;
};
struct DeletePlanResponse : ResponseHeader {
  int32_t restorable_seconds = 0;  // as in DeletePlanGroupResponse
};

/// Takes back the deletion of a plan, or of a group with all that went with it.
struct RestoreDeletedRequest {
  std::string index_code;
  bool is_group = false;
};
struct RestoreDeletedResponse : ResponseHeader {};

struct GetPlanDetailRequest {
  std::string plan_index_code;
  int32_t query_kind = 0;  // 1 asks for the automatic plan, whatever the code
  bool play = false;
};
struct GetPlanDetailResponse : ResponseHeader {
  std::string index_code, name, group_index_code, group_name;
  int32_t type = 0;
  bool auto_run = false;
  std::string start_time, end_time;
  std::list<PlanPage> pages;
  std::string creator, creation_time, thumbnail;
  int64_t revision = 0;
  std::string changed_by, changed_at;  // who made this revision, "yyyy-MM-dd HH:mm:ss"; blank: the host does not say
};

struct AddPlanLogRequestParam {
  std::string name;                              // of the plan
  bool automatic = false, from_history = false;  // how it came to be played
};
struct AddPlanLogResponseParam : ResponseHeader {};

struct SearchPlanRequest {
  std::string text;   // part of a name
  int32_t scope = 0;  // 0 public plans, 1 the user's own
};
struct SearchPlanResponse : ResponseHeader {
  std::list<SearchedPlan> plans;
};

struct GetClientDefaultViewConfigRequest {};
struct GetClientDefaultViewConfigResponse : ResponseHeader {
  std::string index_code = "-3";  // "-3": no default view
  int32_t type = 0;               // of the row it names, as the caller stored it
};
// The service's own spellings.
struct ClienDefaultViewConfigRequest {
  std::string index_code = "-3";
  int32_t type = 0;
};
struct ClienDefaultViewConfigReponse : ResponseHeader {};

struct GetPlanConfigRequest {};
struct GetPlanConfigResponse : ResponseHeader {
  bool load_all = false, create_under_root = false, enable_search = true, enable_drag = true,
       delete_with_children = true;
  int32_t show_mode = 0;
  bool timed_play = false, only_camera = false, move_public_private = false, add_from_favorite = false,
       smooth_stream = true, creation_info = false, save_single_cycle = false, thumbnail = true, group_cycle = true;
};

struct UserInfo {
  int32_t id = 0;
  std::string name;
};
struct GetCurrentUserRequest {};
struct GetCurrentUserResponse : ResponseHeader {
  UserInfo user;
};
struct UserRequestInfo {};
struct UserResponseInfo : ResponseHeader {
  std::list<UserInfo> users;
};
struct ViewShareResquestInfo {
  std::string user_ids;  // "3,7"
  std::string plan_index_code;
};
struct ShareViewResponseInfo : ResponseHeader {
  int32_t error_model = 0, error_code = 0;
};

struct ClienInitViewDataRequest {};
struct ClienInitViewDataResponse : ResponseHeader {};

}  // namespace view_plugin_protocol

Q_DECLARE_METATYPE(view_plugin_protocol::PlanGroup)
Q_DECLARE_METATYPE(view_plugin_protocol::PlanBasicInfo)
Q_DECLARE_METATYPE(view_plugin_protocol::PlanItem)
Q_DECLARE_METATYPE(view_plugin_protocol::SearchedPlan)
Q_DECLARE_METATYPE(view_plugin_protocol::GetPlanGroupsResponse)
Q_DECLARE_METATYPE(view_plugin_protocol::GetPlansInGroupResponse)
Q_DECLARE_METATYPE(view_plugin_protocol::AddPlanRequest)
Q_DECLARE_METATYPE(view_plugin_protocol::UpdatePlanRequest)
Q_DECLARE_METATYPE(view_plugin_protocol::GetPlanDetailResponse)
Q_DECLARE_METATYPE(view_plugin_protocol::GetClientDefaultViewConfigResponse)
Q_DECLARE_METATYPE(view_plugin_protocol::ClienDefaultViewConfigReponse)
