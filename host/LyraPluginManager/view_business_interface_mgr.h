#pragma once

#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceData/resource_observer.h"
#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's plan service: plans, groups, default view, users, sharing and observation of changes.
///
/// Every call blocks until the service has an answer and never pumps events. On false the response holds nothing but
/// its header: a text for the user, and an ErrorKind. Calls are made in the name of the user who is logged in. After
/// the host began to close every call returns false. A change that was answered true shows in the answer to every call
/// that is made later.
///
/// Thread: any, several at once; changes of one plan or group come one after the other. On the GUI thread the plug-in
/// asks GetPlanGroups(), GetPlansInGroup(), GetPlanDetail(), CountBelowGroup(), GetPlanConfig(), GetCurrentUser(),
/// GetAllUserInfo(), GetClientViewConfig(), SetClientViewConfig(), ViewShareUsers() and those below: they hold the
/// user's desk for as long as they take. So reads have to be answered from memory, and the two changes within 2 s.
class TARN_HOST_EXPORT CViewBusinessInterfaceMgr : public Wren::Base::CSingleton<CViewBusinessInterfaceMgr> {
 public:
  /// The groups that stand directly below a group or a root; "root" answers the one above all, whose name each tree's
  /// root shows. Gone for a code that nothing visible has.
  bool GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest& request,
                     view_plugin_protocol::GetPlanGroupsResponse& response);
  /// The plans that stand directly in a group or below a root, without their pages. Gone as for groups.
  bool GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest& request,
                       view_plugin_protocol::GetPlansInGroupResponse& response);
  /// The answer carries the new group's code. Refused: the name breaks the rule for names, or the tree gets too deep.
  bool AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest& request,
                    view_plugin_protocol::AddPlanGroupResponse& response);
  /// Renames a group; it cannot be moved. True also for the name that it has.
  bool UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request,
                       view_plugin_protocol::UpdatePlanGroupResponse& response);
  /// Deletes a group with everything below it, or is refused when it is not empty, as the service is configured. The
  /// answer says for how long it can be taken back, as does that of DeletePlan(). What is observed below it needs no
  /// notices of its own.
  bool DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest& request,
                       view_plugin_protocol::DeletePlanGroupResponse& response);
  /// How much stands below a group, from memory: for what is said before a group is deleted. False from hosts that
  /// cannot say.
  bool CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest& request,
                       view_plugin_protocol::CountBelowGroupResponse& response);
  /// Makes a plan. The service records creator and time; the answer carries the new plan's code.
  bool AddPlan(const view_plugin_protocol::AddPlanRequest& request, view_plugin_protocol::AddPlanResponse& response);
  /// Replaces all of a plan, its group too: for a change of one thing fetch the plan first. A revision makes it fail
  /// when the plan was changed since.
  bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                  view_plugin_protocol::UpdatePlanResponse& response);
  /// Deletes a plan. Default views that name it are taken away with it.
  bool DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                  view_plugin_protocol::DeletePlanResponse& response);
  /// Takes a deletion back for as long as its answer said, the store for a minute, and only for who has deleted it: all
  /// stands where it stood, default views too. Observers, also this client's own, hear of it as of an addition. Gone:
  /// too late, or no group above; Refused: its name was taken; NotPermitted: another user's, or a right is missing.
  bool RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request,
                      view_plugin_protocol::RestoreDeletedResponse& response);
  /// A whole plan. With query kind 1 it is the automatic one: of the plans that the user sees and whose end comes after
  /// their beginning the one that is due now, else the next to begin, of equals that with the lower code. When there is
  /// none the error text is "NoAutoRunPlan".
  bool GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest& request,
                     view_plugin_protocol::GetPlanDetailResponse& response);
  /// Records that a plan was played. What comes of it is not shown.
  bool AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam& request,
                  view_plugin_protocol::AddPlanLogResponseParam& response);
  /// Plans whose name holds the text, upper and lower case alike. Scope: 0 public plans, 1 the user's own. Asked for
  /// each scope by itself while the user types.
  bool SearchPlan(const view_plugin_protocol::SearchPlanRequest& request,
                  view_plugin_protocol::SearchPlanResponse& response);
  /// The user's default view; "-3" for none, and for one that the user does not see any more.
  bool GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                           view_plugin_protocol::GetClientDefaultViewConfigResponse& response);
  /// Stores it. Gone for a plan or group that the user does not see.
  bool SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request,
                           view_plugin_protocol::ClienDefaultViewConfigReponse& response);
  /// The feature switches. Asked once a process, when the plug-in's data manager is made.
  bool GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest& request,
                     view_plugin_protocol::GetPlanConfigResponse& response);
  /// Who is logged in. Asked before and after a change waited for its turn: a change that another user would make is
  /// dropped. False makes all changes fail.
  bool GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest& request,
                      view_plugin_protocol::GetCurrentUserResponse& response);
  /// All users of the site, each time somebody shares a plan.
  bool GetAllUserInfo(const view_plugin_protocol::UserRequestInfo& request,
                      view_plugin_protocol::UserResponseInfo& response);
  /// Gives each of these users a copy of the plan, among their own. All get it, or none.
  bool ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo& request,
                      view_plugin_protocol::ShareViewResponseInfo& response);
  /// Whether all groups are in memory. Asked once IsViewResourceDownFinish() said true; false leaves the trees empty.
  bool IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                             view_plugin_protocol::ClienInitViewDataResponse& response);
  /// Whether all plans are in memory; as for groups.
  bool IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                        view_plugin_protocol::ClienInitViewDataResponse& response);
  /// Whether the plan data is complete in memory, so that trees can be filled. Asked on the GUI thread at each load,
  /// then every 200 ms off it until it says true; the panels show meanwhile that they wait.
  bool IsViewResourceDownFinish();
  /// Drops the plan data in memory and fetches it again in the background; may do nothing where it is always up to
  /// date. Returns at once. IsViewResourceDownFinish() says false until it is there.
  void ClearViewData();
  /// Registers (action 1) or removes (action 0) an observer of one plan, one group or, with the code "root" and type
  /// 16001, of the whole tree. The observer must stay alive until it is removed; it is called on the GUI thread, later
  /// than this call. One that is removed is not called any more, also for what happened before. Where everything is
  /// loaded at once (GetPlanConfigResponse::load_all), registering a group's observer brings one notice for each kind
  /// of child that is there, unless ViewObserverInfo::reads_content says otherwise. Comes tens of thousands of times at
  /// a large site: it must cost microseconds.
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view_plugin_protocol::ViewObserverInfo& info);

 private:
  friend class Wren::Base::CSingleton<CViewBusinessInterfaceMgr>;
  CViewBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
