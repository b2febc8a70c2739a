#pragma once

#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceData/resource_observer.h"
#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's plan service: plans, groups, default view, users, sharing and observation of changes.
///
/// Every call blocks until the service has an answer and never pumps events. On false the response holds nothing but
/// its header: a text for the user, and an ErrorKind. Thread: any, several at once. After the host began to close every
/// call returns false.
class TARN_HOST_EXPORT CViewBusinessInterfaceMgr : public Wren::Base::CSingleton<CViewBusinessInterfaceMgr> {
 public:
  /// The groups that stand directly below a group or a root; "root" answers the one above all.
  bool GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest& request,
                     view_plugin_protocol::GetPlanGroupsResponse& response);
  /// The plans that stand directly in a group or below a root, without their pages.
  bool GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest& request,
                       view_plugin_protocol::GetPlansInGroupResponse& response);
  /// The answer carries the new group's code.
  bool AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest& request,
                    view_plugin_protocol::AddPlanGroupResponse& response);
  /// Renames a group; it cannot be moved.
  bool UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request,
                       view_plugin_protocol::UpdatePlanGroupResponse& response);
  /// With everything below it, or refused when it is not empty, as the service is configured. The answer says for how
  /// long it can be taken back, as does that of DeletePlan().
  bool DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest& request,
                       view_plugin_protocol::DeletePlanGroupResponse& response);
  /// How much stands below a group, from memory: for what is said before a group is deleted. False from hosts that
  /// cannot say.
  bool CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest& request,
                       view_plugin_protocol::CountBelowGroupResponse& response);
  /// The service records creator and time; the answer carries the new plan's code.
  bool AddPlan(const view_plugin_protocol::AddPlanRequest& request, view_plugin_protocol::AddPlanResponse& response);
  /// Replaces all of a plan, its group too: for a change of one thing fetch the plan first. A revision makes it fail
  /// when the plan was changed since.
  bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                  view_plugin_protocol::UpdatePlanResponse& response);
  bool DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                  view_plugin_protocol::DeletePlanResponse& response);
  /// Takes a deletion back for as long as its answer said, the store for a minute, and only for who has deleted it: all
  /// stands where it stood, default views too. Observers, also this client's own, hear of it as of an addition. Gone:
  /// too late, or no group above; Refused: its name was taken; NotPermitted: another user's, or a right is missing.
  bool RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request,
                      view_plugin_protocol::RestoreDeletedResponse& response);
  /// With query kind 1 the answer is the automatic plan; when there is none the error text is "NoAutoRunPlan".
  bool GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest& request,
                     view_plugin_protocol::GetPlanDetailResponse& response);
  /// Records that a plan was played.
  bool AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam& request,
                  view_plugin_protocol::AddPlanLogResponseParam& response);
  /// Plans whose name holds the text, upper and lower case alike. Scope: 0 public plans, 1 the user's own.
  bool SearchPlan(const view_plugin_protocol::SearchPlanRequest& request,
                  view_plugin_protocol::SearchPlanResponse& response);
  /// The user's default view; "-3" for none.
  bool GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                           view_plugin_protocol::GetClientDefaultViewConfigResponse& response);
  bool SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request,
                           view_plugin_protocol::ClienDefaultViewConfigReponse& response);
  /// The feature switches.
  bool GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest& request,
                     view_plugin_protocol::GetPlanConfigResponse& response);
  bool GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest& request,
                      view_plugin_protocol::GetCurrentUserResponse& response);
  bool GetAllUserInfo(const view_plugin_protocol::UserRequestInfo& request,
                      view_plugin_protocol::UserResponseInfo& response);
  /// Gives each of these users a copy of the plan.
  bool ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo& request,
                      view_plugin_protocol::ShareViewResponseInfo& response);
  /// Whether all groups are in memory.
  bool IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                             view_plugin_protocol::ClienInitViewDataResponse& response);
  /// Whether all plans are in memory.
  bool IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                        view_plugin_protocol::ClienInitViewDataResponse& response);
  /// Whether the plan data is complete in memory.
  bool IsViewResourceDownFinish();
  /// Drops the plan data in memory and fetches it again in the background.
  void ClearViewData();
  /// Registers (action 1) or removes (action 0) an observer of one plan, one group or, with the code "root" and type
  /// 16001, of the whole tree. The observer must stay alive until it is removed; it is called on the GUI thread.
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view_plugin_protocol::ViewObserverInfo& info);

 private:
  friend class Wren::Base::CSingleton<CViewBusinessInterfaceMgr>;
  CViewBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
