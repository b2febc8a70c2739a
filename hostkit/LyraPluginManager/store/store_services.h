#pragma once

#include <functional>
#include <memory>

#include "TarnHost/plan_store.h"
#include "accounts/account_check.h"
#include "store/plan_operations.h"
#include "store/site_operations.h"
#include "store/store_runner.h"

namespace TarnHost::Store {

/// The plan store as the host's services: answers each call, and turns what keeps it from being done into the answer.
class CStoreServices : public CPlanStore {
 public:
  explicit CStoreServices(PlanStoreOptions options);
  ~CStoreServices() override;

  /// Opens the database and starts the first download; throws CStoreError. Once, before anything else.
  void Start() { runner_->Start(); }

  LogInAnswer LogIn(const LogInRequest& request, const LogInSteps& steps) override;
  LogInAnswer CheckPassword(const LogInRequest& request) override;
  bool HasPassword(const QString& user) const override;
  bool AsksForPasswords() const override;
  bool KeepsRights() const override { return runner_->HidesRows(); }
  QString DefaultUser() const override { return site_.DefaultUser(); }
  QDateTime CopyMoment() const override;
  std::string StationId() const override { return runner_->Site().StationId(); }
  std::string FindPlanByName(const QString& name) const override;
  bool Close() override { return runner_->Close(); }

  bool GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest& request,
                     view_plugin_protocol::GetPlanGroupsResponse& response) override;
  bool GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest& request,
                       view_plugin_protocol::GetPlansInGroupResponse& response) override;
  bool AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest& request,
                    view_plugin_protocol::AddPlanGroupResponse& response) override;
  bool UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request,
                       view_plugin_protocol::UpdatePlanGroupResponse& response) override;
  bool DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest& request,
                       view_plugin_protocol::DeletePlanGroupResponse& response) override;
  bool CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest& request,
                       view_plugin_protocol::CountBelowGroupResponse& response) override;
  bool AddPlan(const view_plugin_protocol::AddPlanRequest& request,
               view_plugin_protocol::AddPlanResponse& response) override;
  bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                  view_plugin_protocol::UpdatePlanResponse& response) override;
  bool DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                  view_plugin_protocol::DeletePlanResponse& response) override;
  bool RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request,
                      view_plugin_protocol::RestoreDeletedResponse& response) override;
  bool GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest& request,
                     view_plugin_protocol::GetPlanDetailResponse& response) override;
  bool AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam& request,
                  view_plugin_protocol::AddPlanLogResponseParam& response) override;
  bool SearchPlan(const view_plugin_protocol::SearchPlanRequest& request,
                  view_plugin_protocol::SearchPlanResponse& response) override;
  bool GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
                           view_plugin_protocol::GetClientDefaultViewConfigResponse& response) override;
  bool SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request,
                           view_plugin_protocol::ClienDefaultViewConfigReponse& response) override;
  bool GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest& request,
                     view_plugin_protocol::GetPlanConfigResponse& response) override;
  bool GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest& request,
                      view_plugin_protocol::GetCurrentUserResponse& response) override;
  bool GetAllUserInfo(const view_plugin_protocol::UserRequestInfo& request,
                      view_plugin_protocol::UserResponseInfo& response) override;
  bool ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo& request,
                      view_plugin_protocol::ShareViewResponseInfo& response) override;
  bool IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                             view_plugin_protocol::ClienInitViewDataResponse& response) override;
  bool IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                        view_plugin_protocol::ClienInitViewDataResponse& response) override;
  bool IsViewResourceDownFinish() override { return runner_->IsDownloaded(); }
  void ClearViewData() override { runner_->Download(); }
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view_plugin_protocol::ViewObserverInfo& info) override;
  bool CheckControlPermission(int code) override { return site_.HasRight(code); }
  bool GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                  ptz_plugin_protocol::GetPresetResponse& response) override;
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                     std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) override;
  bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) override;
  bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) override;
  bool GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                  ptz_plugin_protocol::GotoPresetResponse& response) override;
  bool GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList& access,
                       std::string* error) override;
  bool ChangeCameras(const CameraChanges& changes, CameraChangesMade& made, std::string* error) override;
  bool SetCameraAuthority(const std::string& pem, std::string* error) override;
  bool GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing& showing,
                       std::string* error) override;
  bool GetSiteUsers(SiteUsers& users, std::string* error) override;
  bool ChangeSiteUsers(const SiteUserChanges& changes, std::string* error) override;
  bool GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                        play_plugin_protocol::GetStreamAbiResponse& response) override;

 private:
  LogInAnswer LogInAnywhere(const LogInRequest& request, const LogInSteps& steps);
  LogInAnswer LogInAtServer(const LogInRequest& request, const LogInSteps& steps);
  bool AsksCopy() const;
  LogInAnswer CheckAnywhere(const LogInRequest& request);
  LogInAnswer CheckAtServer(const LogInRequest& request);
  LogInAnswer CheckWithoutServer(const LogInRequest& request, const LogInAnswer& unavailable);
  void KeepPassword(const LogInRequest& request);
  bool IsSomeUser(const QString& name) const;
  LogInAnswer LogInAtCopy(const LogInRequest& request, const LogInSteps& steps);
  void RaiseTreeEvent(const std::function<void()>& before_trees);
  void PostChildrenOf(const std::string& group_code);

  const std::shared_ptr<CStoreRunner> runner_;
  CPlanOperations plans_;
  CSiteOperations site_;
  CAccountCheck accounts_;
  CTriesInMemory tries_;
};

}  // namespace TarnHost::Store
