#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QThread>
#include <any>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "LyraPluginManager/error_kind.h"
#include "TarnHost/host_services.h"

namespace TarnTest {

namespace view = view_plugin_protocol;

/// Stands before the real services: notes every call, and holds or fails those that a test names.
///
/// A held call waits on its worker thread until Release(); calls from the GUI thread are never held: nothing could
/// release them. Thread: any.
class CRecordingServices : public TarnHost::IHostServices {
 public:
  enum HoldPoint { BeforeCall, AfterCall };  // AfterCall: the answer is there already, but arrives late

  struct Call {
    QString name;
    bool on_gui_thread;
    std::any request;
  };
  struct Registration {
    ResourceData::IResourceObserver* observer;
    view::ViewObserverInfo info;
  };

  explicit CRecordingServices(std::shared_ptr<TarnHost::IHostServices> target);
  ~CRecordingServices() override;

  void Hold(const QString& call, HoldPoint point = BeforeCall);
  void Release(const QString& call);
  void ReleaseAll();
  /// Waits until `count` calls of this name stand at the gate; events go on meanwhile.
  bool WaitUntilHeld(const QString& call, int count = 1);
  /// From now on the call returns false with this text and kind and does not reach the target.
  void Fail(const QString& call, const std::string& error_info = "refused",
            view::ErrorKind kind = view::UnknownFailure);
  void Mend(const QString& call);
  /// From now on the user has (or lacks) this right as far as the plug-in can see; the target goes by its own.
  void SetRight(int code, bool granted);
  /// Whether the host says that a deleted plan can be taken back.
  void SetKeepsDeleted(bool keeps) { keeps_deleted_ = keeps; }

  std::vector<Call> Calls() const;
  int Count(const QString& call) const;
  void ForgetCalls();
  /// All requests of one type since ForgetCalls(), in order.
  template <class Request>
  std::vector<Request> Requests() const;

  /// The observer that is registered now; null for none.
  ResourceData::IResourceObserver* ObserverOf(int32_t type, const std::string& code) const;
  int ObserverCount() const;

#define TARN_RECORD(Name, Request, Response)                                                                  \
  bool Name(const Request& request, Response& response) override {                                            \
    return pass(QStringLiteral(#Name), request, &response, [&] { return target_->Name(request, response); }); \
  }
  TARN_RECORD(GetPlanGroups, view::GetPlanGroupsRequest, view::GetPlanGroupsResponse)
  TARN_RECORD(GetPlansInGroup, view::GetPlansInGroupRequest, view::GetPlansInGroupResponse)
  TARN_RECORD(AddPlanGroup, view::AddPlanGroupRequest, view::AddPlanGroupResponse)
  TARN_RECORD(UpdatePlanGroup, view::UpdatePlanGroupRequest, view::UpdatePlanGroupResponse)
  TARN_RECORD(DeletePlanGroup, view::DeletePlanGroupRequest, view::DeletePlanGroupResponse)
  TARN_RECORD(CountBelowGroup, view::CountBelowGroupRequest, view::CountBelowGroupResponse)
  TARN_RECORD(AddPlan, view::AddPlanRequest, view::AddPlanResponse)
  TARN_RECORD(UpdatePlan, view::UpdatePlanRequest, view::UpdatePlanResponse)
  TARN_RECORD(RestoreDeleted, view::RestoreDeletedRequest, view::RestoreDeletedResponse)
  TARN_RECORD(GetPlanDetail, view::GetPlanDetailRequest, view::GetPlanDetailResponse)
  TARN_RECORD(AddPlanLog, view::AddPlanLogRequestParam, view::AddPlanLogResponseParam)
  TARN_RECORD(SearchPlan, view::SearchPlanRequest, view::SearchPlanResponse)
  TARN_RECORD(GetClientViewConfig, view::GetClientDefaultViewConfigRequest, view::GetClientDefaultViewConfigResponse)
  TARN_RECORD(SetClientViewConfig, view::ClienDefaultViewConfigRequest, view::ClienDefaultViewConfigReponse)
  TARN_RECORD(GetPlanConfig, view::GetPlanConfigRequest, view::GetPlanConfigResponse)
  TARN_RECORD(GetCurrentUser, view::GetCurrentUserRequest, view::GetCurrentUserResponse)
  TARN_RECORD(GetAllUserInfo, view::UserRequestInfo, view::UserResponseInfo)
  TARN_RECORD(ViewShareUsers, view::ViewShareResquestInfo, view::ShareViewResponseInfo)
  TARN_RECORD(IsInitViewGroupFinish, view::ClienInitViewDataRequest, view::ClienInitViewDataResponse)
  TARN_RECORD(IsInitViewFinish, view::ClienInitViewDataRequest, view::ClienInitViewDataResponse)
  TARN_RECORD(GetPresets, ptz_plugin_protocol::GetPresetRequest, ptz_plugin_protocol::GetPresetResponse)
  TARN_RECORD(GotoPreset, ptz_plugin_protocol::GotoPresetRequest, ptz_plugin_protocol::GotoPresetResponse)
  TARN_RECORD(GetStreamAbility, play_plugin_protocol::GetStreamAbiRequest, play_plugin_protocol::GetStreamAbiResponse)
#undef TARN_RECORD
  bool DeletePlan(const view::DeletePlanResquest& request, view::DeletePlanResponse& response) override {
    return pass(QStringLiteral("DeletePlan"), request, &response, [&] {
      const bool ok = target_->DeletePlan(request, response);
      response.restorable_seconds *= int(keeps_deleted_);
      return ok;
    });
  }

  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                     std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) override;
  bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) override;
  bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) override;
  bool GetCameraAccess(const std::vector<std::string>& index_codes, TarnHost::CameraAccessList& access,
                       std::string* error) override;
  bool ChangeCameras(const TarnHost::CameraChanges& changes, TarnHost::CameraChangesMade& made,
                     std::string* error) override;
  bool SetCameraAuthority(const std::string& pem, std::string* error) override;
  bool GetPlansShowing(const std::vector<std::string>& camera_codes, TarnHost::PlansShowing& showing,
                       std::string* error) override;
  bool GetSiteUsers(TarnHost::SiteUsers& users, std::string* error) override;
  bool ChangeSiteUsers(const TarnHost::SiteUserChanges& changes, std::string* error) override;
  bool IsViewResourceDownFinish() override;
  void ClearViewData() override;
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view::ViewObserverInfo& info) override;
  bool CheckControlPermission(int code) override;
  std::string StationId() const override;

 private:
  template <class Answer, class Forward>
  bool pass(const QString& name, std::any request, Answer* answer, const Forward& forward);
  void note(const QString& name, std::any request);
  /// Whether the call is to fail, and what it answers then.
  bool failure(const QString& name, view::ResponseHeader* answer) const;
  bool failure(const QString& name, std::string* error_info) const;
  void waitAt(const QString& name, HoldPoint point);

  const std::shared_ptr<TarnHost::IHostServices> target_;
  mutable std::mutex mutex_;
  std::condition_variable opened_;
  QMap<QString, HoldPoint> held_;
  QMap<QString, int> waiting_;
  QMap<QString, view::ResponseHeader> failures_;
  QMap<int, bool> rights_;
  std::atomic<bool> keeps_deleted_{true};
  std::vector<Call> calls_;
  std::vector<Registration> observers_;
};

template <class Request>
std::vector<Request> CRecordingServices::Requests() const {
  std::vector<Request> found;
  for (const Call& call : Calls()) {
    if (const auto* request = std::any_cast<Request>(&call.request)) {
      found.push_back(*request);
    }
  }
  return found;
}

template <class Answer, class Forward>
bool CRecordingServices::pass(const QString& name, std::any request, Answer* answer, const Forward& forward) {
  note(name, std::move(request));
  waitAt(name, BeforeCall);
  const bool fails = failure(name, answer);
  const bool ok = !fails && forward();
  waitAt(name, AfterCall);
  return ok;
}

}  // namespace TarnTest
