#pragma once

#include <QList>
#include <QMetaType>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

// Records of the plan service. Texts are UTF-8. An index code names a group or plan, or a root: "-1" public, "-2" the
// user's own, "-4" received; it is decimal, and none is used a second time. A `type` is a family, as in PlanGroup,
// where nothing else is said. A response beyond its header is meaningful only when the call returned true.
namespace view_plugin_protocol {

/// What an answer says of a call that returned false.
struct ResponseHeader {
  /// Why it failed, in the user's language. It is shown as it is, so it is never blank; only the answer that no plan
  /// starts by itself is a word, "NoAutoRunPlan".
  std::string error_info;
  int32_t error_kind = 0;                    ///< An ErrorKind, for the caller to act on; 0 when the host gives none.
  std::vector<std::string> error_arguments;  ///< What error_info names, in its order: a plan, a limit. May be empty.
};

/// A group of plans, as lists show it. Groups may have the same name.
struct PlanGroup {
  std::string name;               ///< 1 to 256 UTF-16 units, not blanks alone, none of `\/:*?"<>|`.
  std::string parent_index_code;  ///< Code of the group or root that it stands in.
  std::string index_code;         ///< Its own code; "root" for the one above all.
  int32_t type = 0;               ///< Family: 0 public, 1 the user's own, 2 received in common.
};

/// A plan without its pages, as lists show it.
struct PlanBasicInfo {
  std::string index_code;        ///< Its code.
  std::string name;              ///< As for groups; plans of one group may have the same name.
  std::string group_index_code;  ///< Code of the group or root that it stands in.
  int32_t type = 0;              ///< Family.
  int32_t split_type = 1;        ///< Of its first page: 1, 2, 4, 8 stand for 1, 4, 9, 16 windows.
  int32_t page_count = 1;        ///< From 1. More than one: the wall turns the pages by itself.
  bool auto_run = false;         ///< It starts and ends by itself each day; its row carries a clock.
};

/// What one window of a page shows.
struct PlanWindow {
  int32_t window_no = 0;      ///< From 1, row by row; at most 16. What lies beyond the split is kept, but not shown.
  int32_t content_kind = 0;   ///< 0 none given, 1 camera; any other is kept and shown as content of another kind.
  std::string resource_code;  ///< Code of the camera. With a code and kind 0 the window counts as a camera's, too.
  std::string resource_name;  ///< The camera's name when the plan was saved, for the time until it is looked up.
  int32_t stream_type = 0;    ///< 0 main, 1 sub, 2 smooth.
  int32_t preset_no = 0;      ///< Position that the camera turns to when the plan plays; 0 for none.
  std::string extra = {};     ///< What a newer version keeps here, a JSON object: handed back with the window.
};

/// One page of a plan.
struct PlanPage {
  int32_t page_no = 0;            ///< From 1; pages are shown in this order.
  std::string name;               ///< May be empty.
  int32_t split_type = 1;         ///< As in PlanBasicInfo.
  int32_t dwell_seconds = 10;     ///< How long it stays before the next one. The editor offers 5 to 86400.
  std::list<PlanWindow> windows;  ///< Those with content, in any order; a window without a record is empty.
  std::string extra = {};         ///< What a newer version keeps here, a JSON object: handed back with the page.
};

/// A window together with its page, where one window is meant by itself.
struct PlanItem {
  int32_t page_no = 0;  ///< As in PlanPage.
  PlanWindow window;    ///< What stands there.
};

/// One hit of a search.
struct SearchedPlan {
  std::string index_code;        ///< Code of the plan.
  std::string name;              ///< Its name.
  std::string group_index_code;  ///< Code of the group or root that it stands in.
  std::string group_name;        ///< Name of that group; the root's for a plan that stands right below it.
  int32_t type = 0;              ///< Family.
  std::vector<std::string> groups_above = {};  ///< Names, the outermost first, without the root; empty: not known.
  std::string shown_camera = {};  ///< Name of the camera by which it was found; empty: found by its own name.
  int32_t page_count = 1;         ///< As in PlanBasicInfo.
  bool auto_run = false;          ///< As in PlanBasicInfo.
};

/// What is known of a row of the plan tree.
struct TarnPlanViewInfo {
  std::string index_code;        ///< Code of the plan or group; of a root its own, "-1" and so on.
  std::string name;              ///< As the row shows it.
  std::string group_index_code;  ///< Code of the row above; empty for a root.
  std::string group_name;        ///< Its text.
  int32_t type = 0;              ///< Family.
  bool is_group = false;         ///< A group or a root.
  bool playing = false;          ///< A plan that carries the playing mark.
};

/// Whom ViewRegisterResourceUpdate() is to tell of what.
struct ViewObserverInfo {
  int32_t resource_type = 0;  ///< A ResourceData::ResourceType: 16000 a plan, 16001 a group or "root".
  std::string index_code;     ///< Code of the plan or group; "root" for the whole tree.
  int32_t action = 0;         ///< 1 registers, 0 removes.
  /// Of a group's observer where everything is loaded at once: the one who registers reads the group's content next, so
  /// no notices of what is in it already are wanted.
  bool reads_content = false;
};

/// Asks for the groups directly below one.
struct GetPlanGroupsRequest {
  std::string parent_index_code;  ///< Code of a group or root, or "root".
  int32_t node_type = 0;  ///< Item type of the row, or its family. The code alone decides: a host can do without.
};
/// The groups that the user sees there.
struct GetPlanGroupsResponse : ResponseHeader {
  QList<PlanGroup> groups;  ///< In any order: the trees sort. "root" gives exactly one.
};

/// Asks for the plans directly in a group.
struct GetPlansInGroupRequest {
  std::string group_index_code;  ///< Code of a group or root.
  int32_t node_type = 0;         ///< As in GetPlanGroupsRequest.
};
/// The plans that the user sees there.
struct GetPlansInGroupResponse : ResponseHeader {
  QList<PlanBasicInfo> plans;  ///< In any order.
};

/// A new group.
struct AddPlanGroupRequest {
  std::string name;               ///< By the rule for names, see PlanGroup; the host checks it.
  std::string parent_index_code;  ///< Code of the group or root that it goes into.
  int32_t kind = 0;               ///< The family. Where the parent's is another, the parent's counts.
  bool flag = false;              ///< Set below received plans.
};
/// What was made.
struct AddPlanGroupResponse : ResponseHeader {
  std::string index_code;  ///< Code of the new group.
};

/// Another name for a group.
struct UpdatePlanGroupRequest {
  std::string index_code;  ///< Code of the group.
  std::string name;        ///< The new name, by the rule for names.
  bool flag = false;       ///< Set for a group of received plans.
};
/// The header alone.
struct UpdatePlanGroupResponse : ResponseHeader {};

/// A group to delete with all that is below it.
struct DeletePlanGroupRequest {
  std::string index_code;  ///< Code of the group.
  std::string name;        ///< Its name as the user saw it, for a log.
  int32_t type = 0;        ///< Family, for a log.
};
/// What went, and for how long it can be had back.
struct DeletePlanGroupResponse : ResponseHeader {
  int32_t restorable_seconds = 0;  ///< How long the user is offered to take it back; 0: it is gone for good.
  int32_t deleted_groups = -1;     ///< Groups that went with it, on all levels, itself not counted; -1: not known.
  int32_t deleted_plans = -1;      ///< Plans that went with it, on all levels; -1: not known.
};

/// Asks how much stands below a group.
struct CountBelowGroupRequest {
  std::string index_code;  ///< Code of the group.
};
/// How much it is, as far as the user sees it.
struct CountBelowGroupResponse : ResponseHeader {
  int32_t groups = 0;  ///< On all levels, itself not counted.
  int32_t plans = 0;   ///< On all levels.
};

/// A new plan.
struct AddPlanRequest {
  std::string plan_name;          ///< By the rule for names, see PlanGroup; the host checks it.
  int32_t index_type = 0;         ///< The family. Where the group's is another, the group's counts.
  std::string parent_index_code;  ///< Code of the group or root that it goes into.
  std::string parent_name;        ///< Name of that group, for a log.
  bool auto_play = false;         ///< Whether it starts and ends by itself each day.
  std::string begin_time;         ///< "HH:mm:ss", local time of the desk; without `auto_play` kept, but not checked.
  std::string end_time;           ///< The same. Not after begin_time: it never starts.
  std::list<PlanPage> pages;      ///< One at least; 128 filled windows at most on all of them together.
  std::string thumbnail;          ///< PNG bytes, up to 256 KiB and 1024 pixels a side; empty: none, or as it was.
};
/// What was made.
struct AddPlanResponse : ResponseHeader {
  std::string index_code;  ///< Code of the new plan.
};

/// Replaces all of a plan. An empty parent_index_code leaves it in its group, an empty thumbnail keeps the old one.
struct UpdatePlanRequest : AddPlanRequest {
  std::string plan_index_code;  ///< Code of the plan.
  int64_t revision = 0;  ///< The one it was read with: refused as Changed when it has a later one. 0: not checked.
};
/// The header alone.
struct UpdatePlanResponse : ResponseHeader {};

/// A plan to delete (the service's own spelling). The code says all; the rest is for a log.
struct DeletePlanResquest {
  std::string plan_index_code;   ///< Code of the plan.
  std::string plan_name;         ///< Its name as the user saw it.
  std::string group_index_code;  ///< Code of its group; "-1" below any root.
  std::string group_name;        ///< Name of that row.
  std::string reserved;          ///< Always empty.
};
/// For how long it can be had back.
struct DeletePlanResponse : ResponseHeader {
  int32_t restorable_seconds = 0;  ///< As in DeletePlanGroupResponse.
};

/// Takes back the deletion of a plan, or of a group with all that went with it.
struct RestoreDeletedRequest {
  std::string index_code;  ///< The code that it had.
  bool is_group = false;   ///< Whether that was a group's.
};
/// What it is called now.
struct RestoreDeletedResponse : ResponseHeader {
  std::string index_code;  ///< The code that it has now; empty: the one it had.
};

/// Asks for a whole plan.
struct GetPlanDetailRequest {
  std::string plan_index_code;  ///< Code of the plan; not looked at for the automatic plan.
  int32_t query_kind = 0;       ///< 0 the plan of that code; 1 the visible one that starts by itself next, or runs now.
  bool play = false;            ///< It is asked for in order to be played. For a log.
};
/// A whole plan.
struct GetPlanDetailResponse : ResponseHeader {
  std::string index_code;        ///< Its code.
  std::string name;              ///< Its name.
  std::string group_index_code;  ///< Code of the group or root that it stands in.
  std::string group_name;        ///< Name of that group; the root's for a plan that stands right below it.
  int32_t type = 0;              ///< Family.
  bool auto_run = false;         ///< Whether it starts and ends by itself each day.
  std::string start_time;        ///< "HH:mm:ss", or empty where none was ever given.
  std::string end_time;          ///< The same.
  std::list<PlanPage> pages;     ///< In the order of their numbers.
  std::string creator;           ///< Name of the user who made it.
  std::string creation_time;     ///< "yyyy-MM-dd HH:mm:ss", local time of the desk that made it.
  std::string thumbnail;         ///< PNG bytes; empty for none.
  int64_t revision = 0;          ///< From 1, one more with each change; 0: the host keeps none.
  std::string changed_by;        ///< Who made this revision; empty: the host does not say.
  std::string changed_at;        ///< When, as creation_time; empty: the host does not say.
};

/// That a plan was played, for the site's log of plays.
struct AddPlanLogRequestParam {
  std::string name;           ///< Name of the plan.
  bool automatic = false;     ///< It started by itself.
  bool from_history = false;  ///< The user took it from the list of plans played lately.
};
/// The header alone.
struct AddPlanLogResponseParam : ResponseHeader {};

/// Looks for plans.
struct SearchPlanRequest {
  std::string text;   ///< Part of a plan's name, upper and lower case alike; a host may look at cameras' names, too.
  int32_t scope = 0;  ///< 0 public plans, 1 the user's own.
};
/// What was found.
struct SearchPlanResponse : ResponseHeader {
  std::list<SearchedPlan> plans;  ///< In the order in which they are shown; none for an empty text.
};

/// Asks for the user's default view; there is nothing to say.
struct GetClientDefaultViewConfigRequest {};
/// What the client opens for this user when it starts.
struct GetClientDefaultViewConfigResponse : ResponseHeader {
  std::string index_code = "-3";  ///< Code of a plan or of a group whose plans take turns; "-3": nothing.
  int32_t type = 0;               ///< 16000 a plan, 16001 a group, as it was stored.
};
/// Stores the user's default view (the service's own spelling).
struct ClienDefaultViewConfigRequest {
  std::string index_code = "-3";  ///< As in the response; "-3" takes it away.
  int32_t type = 0;               ///< 16000 for a plan, 16001 for a group.
};
/// The header alone (the service's own spelling).
struct ClienDefaultViewConfigReponse : ResponseHeader {};

/// Asks for the switches; there is nothing to say.
struct GetPlanConfigRequest {};
/// The switches that decide what the panel offers. Read once a process, when the plug-in starts.
struct GetPlanConfigResponse : ResponseHeader {
  bool load_all = false;             ///< The whole tree is loaded at the start, not group by group when one is opened.
  bool create_under_root = false;    ///< Plans may stand right below a root.
  bool enable_search = true;         ///< The panel has a search.
  bool enable_drag = true;           ///< Rows can be dragged.
  bool delete_with_children = true;  ///< Groups are deleted with what is in them; else only empty ones.
  int32_t show_mode = 0;             ///< 1: the panel says "plan"; any other: "view".
  bool timed_play = false;           ///< Plans can start and end by themselves.
  bool only_camera = false;          ///< The editor leaves windows alone that hold something else than a camera.
  bool move_public_private = false;  ///< An update may move a plan from the public tree to the user's own, or back.
  bool add_from_favorite = false;    ///< Camera trees show the user's favourites.
  bool smooth_stream = true;         ///< The editor offers the smooth stream, where a camera has one.
  bool creation_info = false;        ///< The row menu can show who made a plan, and when.
  bool save_single_cycle = false;    ///< For the host's own saving: the panel does not look at it.
  bool thumbnail = true;             ///< Plans have pictures, which resting on a row shows.
  bool group_cycle = true;           ///< The plans of a group can play one after the other.
};

/// A user of the site.
struct UserInfo {
  int32_t id = 0;    ///< By which ViewShareResquestInfo::user_ids names users.
  std::string name;  ///< As shown.
};
/// Asks who is logged in; there is nothing to say.
struct GetCurrentUserRequest {};
/// Who is logged in.
struct GetCurrentUserResponse : ResponseHeader {
  UserInfo user;  ///< The user in whose name all calls are made.
};
/// Asks for all users; there is nothing to say.
struct UserRequestInfo {};
/// All users, for the choice of whom a plan is shared with.
struct UserResponseInfo : ResponseHeader {
  std::list<UserInfo> users;  ///< The current one among them: the panel leaves that one out.
};
/// Shares a plan (the service's own spelling).
struct ViewShareResquestInfo {
  std::string user_ids;         ///< Numbers of the users, with commas between them: "3,7".
  std::string plan_index_code;  ///< Code of the plan.
};
/// What came of it. True together with an error: the host has shown it, and the panel says nothing.
struct ShareViewResponseInfo : ResponseHeader {
  int32_t error_model = 0;  ///< Part of the host that failed, for its log; 0 for none.
  int32_t error_code = 0;   ///< The host's number of the error: the user is shown it; 0 for none.
};

/// Asks whether the data is there; there is nothing to say.
struct ClienInitViewDataRequest {};
/// The header alone.
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
