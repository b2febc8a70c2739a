#pragma once

#include <utility>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/store_runner.h"

namespace TarnHost::Store {

/// The service's calls about groups, plans and the default view, as the user who is logged in. Reads of the tree answer
/// from memory, everything else from the database. Throws CStoreError. Thread: any.
class CPlanOperations {
 public:
  explicit CPlanOperations(CStoreRunner& runner) : runner_(runner) {}

  void GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest& request,
                     view_plugin_protocol::GetPlanGroupsResponse* response);
  void GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest& request,
                       view_plugin_protocol::GetPlansInGroupResponse* response);
  void AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest& request,
                    view_plugin_protocol::AddPlanGroupResponse* response);
  void UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request,
                       view_plugin_protocol::UpdatePlanGroupResponse* response);
  void DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest& request,
                       view_plugin_protocol::DeletePlanGroupResponse* response);
  void CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest& request,
                       view_plugin_protocol::CountBelowGroupResponse* response);
  void AddPlan(const view_plugin_protocol::AddPlanRequest& request, view_plugin_protocol::AddPlanResponse* response);
  void UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                  view_plugin_protocol::UpdatePlanResponse* response);
  void DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                  view_plugin_protocol::DeletePlanResponse* response);
  void RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request,
                      view_plugin_protocol::RestoreDeletedResponse* response);
  void GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest& request,
                     view_plugin_protocol::GetPlanDetailResponse* response);
  void AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam& request,
                  view_plugin_protocol::AddPlanLogResponseParam* response);
  void SearchPlan(const view_plugin_protocol::SearchPlanRequest& request,
                  view_plugin_protocol::SearchPlanResponse* response);
  void GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                           view_plugin_protocol::GetClientDefaultViewConfigResponse* response);
  void SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request,
                           view_plugin_protocol::ClienDefaultViewConfigReponse* response);
  void ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo& request,
                      view_plugin_protocol::ShareViewResponseInfo* response);

 private:
  int32_t RequestedPlan(const view_plugin_protocol::GetPlanDetailRequest& request, int32_t user) const;
  StoredPlan ReadPlan(int32_t code, int32_t user);
  StoredPlan StoredPlanOf(int32_t code, int32_t user);
  std::optional<StoredPlan> KeptPlan(int32_t code, int32_t user);
  CStoreText WhyPlanIsGone(const std::optional<CKeptDeletions::Deletion>& deletion) const;
  std::pair<int32_t, int32_t> ReadDefaultView(int32_t user);
  StoredPlan ReadPlanForTree(int32_t code, int32_t user);
  std::string ParentName(int32_t parent, int32_t user) const;

  CStoreRunner& runner_;
};

}  // namespace TarnHost::Store
