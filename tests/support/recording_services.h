#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QThread>
#include <any>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "LyraPluginManager/error_kind.h"
#include "TarnHost/host_services.h"

namespace TarnTest {

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
    view_plugin_protocol::ViewObserverInfo info;
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
            view_plugin_protocol::ErrorKind kind = view_plugin_protocol::UnknownFailure);
  void Mend(const QString& call);
  /// From now on the user has (or lacks) this right as far as the plug-in can see; the target goes by its own.
  void SetRight(int code, bool granted);

  std::vector<Call> Calls() const;
  int Count(const QString& call) const;
  void ForgetCalls();
  /// All requests of one type since ForgetCalls(), in order.
  template <class Request>
  std::vector<Request> Requests() const;

  /// Every registration and removal of an observer since ForgetCalls().
  std::vector<Registration> Registrations() const;
  /// The observer that is registered now; null for none.
  ResourceData::IResourceObserver* ObserverOf(int32_t type, const std::string& code) const;
  int ObserverCount() const;

#define TARN_RECORD(Name, Request, Response)                                    \
  bool Name(const Request& request, Response& response) override {              \
    return run(QStringLiteral(#Name), request, response, &IHostServices::Name); \
  }
  TARN_RECORD(GetPlanGroups, view_plugin_protocol::GetPlanGroupsRequest, view_plugin_protocol::GetPlanGroupsResponse)
  TARN_RECORD(GetPlansInGroup, view_plugin_protocol::GetPlansInGroupRequest,
              view_plugin_protocol::GetPlansInGroupResponse)
  TARN_RECORD(AddPlanGroup, view_plugin_protocol::AddPlanGroupRequest, view_plugin_protocol::AddPlanGroupResponse)
  TARN_RECORD(UpdatePlanGroup, view_plugin_protocol::UpdatePlanGroupRequest,
              view_plugin_protocol::UpdatePlanGroupResponse)
  TARN_RECORD(DeletePlanGroup, view_plugin_protocol::DeletePlanGroupRequest,
              view_plugin_protocol::DeletePlanGroupResponse)
  TARN_RECORD(AddPlan, view_plugin_protocol::AddPlanRequest, view_plugin_protocol::AddPlanResponse)
  TARN_RECORD(UpdatePlan, view_plugin_protocol::UpdatePlanRequest, view_plugin_protocol::UpdatePlanResponse)
  TARN_RECORD(DeletePlan, view_plugin_protocol::DeletePlanResquest, view_plugin_protocol::DeletePlanResponse)
  TARN_RECORD(GetPlanDetail, view_plugin_protocol::GetPlanDetailRequest, view_plugin_protocol::GetPlanDetailResponse)
  TARN_RECORD(AddPlanLog, view_plugin_protocol::AddPlanLogRequestParam, view_plugin_protocol::AddPlanLogResponseParam)
  TARN_RECORD(SearchPlan, view_plugin_protocol::SearchPlanRequest, view_plugin_protocol::SearchPlanResponse)
  TARN_RECORD(GetClientViewConfig, view_plugin_protocol::GetClientDefaultViewConfigRequest,
              view_plugin_protocol::GetClientDefaultViewConfigResponse)
  TARN_RECORD(SetClientViewConfig, view_plugin_protocol::ClienDefaultViewConfigRequest,
              view_plugin_protocol::ClienDefaultViewConfigReponse)
  TARN_RECORD(GetPlanConfig, view_plugin_protocol::GetPlanConfigRequest, view_plugin_protocol::GetPlanConfigResponse)
  TARN_RECORD(GetCurrentUser, view_plugin_protocol::GetCurrentUserRequest, view_plugin_protocol::GetCurrentUserResponse)
  TARN_RECORD(GetAllUserInfo, view_plugin_protocol::UserRequestInfo, view_plugin_protocol::UserResponseInfo)
  TARN_RECORD(ViewShareUsers, view_plugin_protocol::ViewShareResquestInfo, view_plugin_protocol::ShareViewResponseInfo)
  TARN_RECORD(IsInitViewGroupFinish, view_plugin_protocol::ClienInitViewDataRequest,
              view_plugin_protocol::ClienInitViewDataResponse)
  TARN_RECORD(IsInitViewFinish, view_plugin_protocol::ClienInitViewDataRequest,
              view_plugin_protocol::ClienInitViewDataResponse)
  TARN_RECORD(GetPresets, ptz_plugin_protocol::GetPresetRequest, ptz_plugin_protocol::GetPresetResponse)
  TARN_RECORD(GetStreamAbility, play_plugin_protocol::GetStreamAbiRequest, play_plugin_protocol::GetStreamAbiResponse)
#undef TARN_RECORD

  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                     std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) override;
  bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) override;
  bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) override;
  bool IsViewResourceDownFinish() override;
  void ClearViewData() override;
  void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                  const view_plugin_protocol::ViewObserverInfo& info) override;
  bool CheckControlPermission(int code) override;
  std::string StationId() const override;

 private:
  template <class Request, class Response>
  bool run(const QString& name, const Request& request, Response& response,
           bool (IHostServices::*call)(const Request&, Response&));
  template <class Answer, class Forward>
  bool pass(const QString& name, std::any request, Answer* answer, const Forward& forward);
  void note(const QString& name, std::any request);
  /// Whether the call is to fail, and what it answers then.
  bool failure(const QString& name, view_plugin_protocol::ResponseHeader* answer) const;
  bool failure(const QString& name, std::string* error_info) const;
  void waitAt(const QString& name, HoldPoint point);

  const std::shared_ptr<TarnHost::IHostServices> target_;
  mutable std::mutex mutex_;
  std::condition_variable opened_;
  QMap<QString, HoldPoint> held_;
  QMap<QString, int> waiting_;
  QMap<QString, view_plugin_protocol::ResponseHeader> failures_;
  QMap<int, bool> rights_;
  std::vector<Call> calls_;
  std::vector<Registration> registrations_;
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

template <class Request, class Response>
bool CRecordingServices::run(const QString& name, const Request& request, Response& response,
                             bool (IHostServices::*call)(const Request&, Response&)) {
  return pass(name, request, &response, [&] { return (*target_.*call)(request, response); });
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
