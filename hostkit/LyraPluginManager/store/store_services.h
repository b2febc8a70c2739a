#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <set>

#include "TarnHost/plan_store.h"
#include "store/database_thread.h"
#include "store/observer_hub.h"
#include "store/plan_catalog.h"
#include "store/plan_reader.h"
#include "store/plan_writer.h"
#include "store/site_directory.h"
#include "store/store_session.h"
#include "store/store_troubles.h"

namespace TarnHost::Store {

/// The plan store's calls: reads from the catalog, everything else by the database thread.
///
/// Owned by a shared pointer: what runs on the threads keeps it alive, also when it was left behind by Close().
class CStoreServices : public CPlanStore, public std::enable_shared_from_this<CStoreServices> {
 public:
  explicit CStoreServices(PlanStoreOptions options);

  /// Opens the database and starts the first download; throws CStoreError. Once, before anything else.
  void Start();

  bool LogIn(const QString& user, QString* error) override;
  QString DefaultUser() const override;
  std::string StationId() const override { return site_.StationId(); }
  std::string FindPlanByName(const QString& name) const override;
  bool Close() override;

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
  bool AddPlan(const view_plugin_protocol::AddPlanRequest& request,
               view_plugin_protocol::AddPlanResponse& response) override;
  bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                  view_plugin_protocol::UpdatePlanResponse& response) override;
  bool DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                  view_plugin_protocol::DeletePlanResponse& response) override;
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
  bool IsViewResourceDownFinish() override;
  void ClearViewData() override;
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view_plugin_protocol::ViewObserverInfo& info) override;
  bool CheckControlPermission(int code) override;
  bool GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                  ptz_plugin_protocol::GetPresetResponse& response) override;
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                     std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) override;
  bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) override;
  bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) override;
  bool GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                        play_plugin_protocol::GetStreamAbiResponse& response) override;

 private:
  void OpenDatabase();  // on the database thread, as the next five
  bool Beat();
  void RequireWritable() const;
  void Reconnect();
  void DownloadWhenWanted();
  void CloseDatabase();

  template <class Work>
  auto Write(Work work);
  template <class Work>
  auto Read(Work work);
  bool EndThreads();
  bool WaitUntilEnded(CDatabaseThread::Clock::time_point deadline);
  void Report(StoreTrouble trouble, const QString& line);
  void LookAgainAtPlans();

  void RequireOpen() const;
  int32_t RequireUser() const;
  void RequireDownloaded() const;
  bool IsDownloaded() const;
  int32_t AutomaticPlan() const;
  StoredPlan ReadPlan(int32_t code, int32_t user);
  StoredPlan ReadPlanForTree(int32_t code, int32_t user);
  std::string ParentName(int32_t parent, int32_t user) const;
  bool IsVisible(int32_t code, int32_t user) const;
  void PostChildrenOf(const std::string& group_code);

  const PlanStoreOptions options_;
  std::unique_ptr<CObserverHub, CObserverHub::Disposer> hub_;
  std::atomic<int32_t> user_{0};
  std::atomic<bool> closed_{false};
  std::once_flag close_once_;
  bool closed_in_order_ = false;
  // Numbers of downloads: the newest, the one in the catalog, the one that counts as complete.
  std::atomic<int> downloads_wanted_{0}, download_done_{0};
  mutable std::atomic<int> download_ready_{0};
  std::atomic<std::chrono::steady_clock::rep> download_end_{0};
  CPlanCatalog catalog_;
  CSiteDirectory site_;

  // Live on the database thread.
  std::unique_ptr<CSqlEngine> engine_;
  std::unique_ptr<CStoreSession> session_;
  std::unique_ptr<CPlanWriter> writer_;
  std::chrono::steady_clock::time_point next_attempt_, next_look_;
  bool connection_lost_ = false;

  // Reads what the catalog does not hold; null where the store has but one connection. Made with the database.
  std::unique_ptr<CPlanReader> reader_;

  // Plans that a tree could not read: reported as changed when the store answers again.
  std::mutex unread_mutex_;
  std::set<int32_t> unread_plans_;

  const std::shared_ptr<CAnswering> answering_;
  const std::shared_ptr<CConnectionWatch> watch_;
  CStoreTroubles troubles_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
