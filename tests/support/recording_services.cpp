#include "recording_services.h"

#include <QCoreApplication>
#include <QtTest>
#include <algorithm>

namespace TarnTest {

namespace {

constexpr int kHeldMs = 30000;

bool OnGuiThread() {
  return QThread::currentThread() == QCoreApplication::instance()->thread();
}

}  // namespace

CRecordingServices::CRecordingServices(std::shared_ptr<TarnHost::IHostServices> target) : target_(std::move(target)) {}

CRecordingServices::~CRecordingServices() {
  ReleaseAll();
}

void CRecordingServices::Hold(const QString& call, HoldPoint point) {
  const std::lock_guard<std::mutex> lock(mutex_);
  held_[call] = point;
}

void CRecordingServices::Release(const QString& call) {
  const std::lock_guard<std::mutex> lock(mutex_);
  held_.remove(call);
  opened_.notify_all();
}

void CRecordingServices::ReleaseAll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  held_.clear();
  opened_.notify_all();
}

bool CRecordingServices::WaitUntilHeld(const QString& call, int count) {
  const auto held = [this, call, count] {
    const std::lock_guard<std::mutex> lock(mutex_);
    return waiting_.value(call) >= count;
  };
  return QTest::qWaitFor(held, kHeldMs);
}

void CRecordingServices::Fail(const QString& call, const std::string& error_info, view::ErrorKind kind) {
  const std::lock_guard<std::mutex> lock(mutex_);
  failures_[call] = {error_info, kind, {}};
}

void CRecordingServices::Mend(const QString& call) {
  const std::lock_guard<std::mutex> lock(mutex_);
  failures_.remove(call);
}

std::vector<CRecordingServices::Call> CRecordingServices::Calls() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return calls_;
}

int CRecordingServices::Count(const QString& call) const {
  const auto calls = Calls();
  return static_cast<int>(
      std::count_if(calls.begin(), calls.end(), [&call](const Call& made) { return made.name == call; }));
}

void CRecordingServices::ForgetCalls() {
  const std::lock_guard<std::mutex> lock(mutex_);
  calls_.clear();
}

ResourceData::IResourceObserver* CRecordingServices::ObserverOf(int32_t type, const std::string& code) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (const Registration& entry : observers_) {
    if (entry.info.resource_type == type && entry.info.index_code == code) {
      return entry.observer;
    }
  }
  return nullptr;
}

int CRecordingServices::ObserverCount() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return static_cast<int>(observers_.size());
}

bool CRecordingServices::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                                       std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) {
  return pass(QStringLiteral("GetCameraTree"), {}, error,
              [&] { return target_->GetCameraTree(regions, cameras, error); });
}

bool CRecordingServices::GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) {
  return pass(QStringLiteral("GetFavoriteCameras"), {}, error,
              [&] { return target_->GetFavoriteCameras(index_codes, error); });
}

bool CRecordingServices::SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) {
  return pass(QStringLiteral("SetFavoriteCamera"), index_code, error,
              [&] { return target_->SetFavoriteCamera(index_code, favorite, error); });
}

bool CRecordingServices::GetCameraAccess(const std::vector<std::string>& index_codes,
                                         TarnHost::CameraAccessList& access, std::string* error) {
  return pass(QStringLiteral("GetCameraAccess"), index_codes, error,
              [&] { return target_->GetCameraAccess(index_codes, access, error); });
}

bool CRecordingServices::ChangeCameras(const TarnHost::CameraChanges& changes, TarnHost::CameraChangesMade& made,
                                       std::string* error) {
  return pass(QStringLiteral("ChangeCameras"), changes, error,
              [&] { return target_->ChangeCameras(changes, made, error); });
}

bool CRecordingServices::SetCameraAuthority(const std::string& pem, std::string* error) {
  return pass(QStringLiteral("SetCameraAuthority"), pem, error,
              [&] { return target_->SetCameraAuthority(pem, error); });
}

bool CRecordingServices::GetPlansShowing(const std::vector<std::string>& camera_codes, TarnHost::PlansShowing& showing,
                                         std::string* error) {
  return pass(QStringLiteral("GetPlansShowing"), camera_codes, error,
              [&] { return target_->GetPlansShowing(camera_codes, showing, error); });
}

bool CRecordingServices::GetSiteUsers(TarnHost::SiteUsers& users, std::string* error) {
  return pass(QStringLiteral("GetSiteUsers"), {}, error, [&] { return target_->GetSiteUsers(users, error); });
}

bool CRecordingServices::ChangeSiteUsers(const TarnHost::SiteUserChanges& changes, std::string* error) {
  return pass(QStringLiteral("ChangeSiteUsers"), changes, error,
              [&] { return target_->ChangeSiteUsers(changes, error); });
}

bool CRecordingServices::IsViewResourceDownFinish() {
  std::string ignored;
  return pass(QStringLiteral("IsViewResourceDownFinish"), {}, &ignored,
              [this] { return target_->IsViewResourceDownFinish(); });
}

void CRecordingServices::ClearViewData() {
  note(QStringLiteral("ClearViewData"), {});
  target_->ClearViewData();
}

void CRecordingServices::ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                                    const view::ViewObserverInfo& info) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (info.action == 1) {
      observers_.push_back({observer, info});
    } else {
      observers_.erase(std::remove_if(observers_.begin(), observers_.end(),
                                      [observer](const Registration& entry) { return entry.observer == observer; }),
                       observers_.end());
    }
  }
  target_->ViewRegisterResourceUpdate(observer, info);
}

bool CRecordingServices::CheckControlPermission(int code) {
  std::string ignored;
  return pass(QStringLiteral("CheckControlPermission"), code, &ignored, [this, code] {
    std::unique_lock<std::mutex> lock(mutex_);
    if (rights_.contains(code)) {
      return rights_.value(code);
    }
    lock.unlock();
    return target_->CheckControlPermission(code);
  });
}

void CRecordingServices::SetRight(int code, bool granted) {
  const std::lock_guard<std::mutex> lock(mutex_);
  rights_.insert(code, granted);
}

std::string CRecordingServices::StationId() const {
  return target_->StationId();
}

void CRecordingServices::note(const QString& name, std::any request) {
  const std::lock_guard<std::mutex> lock(mutex_);
  calls_.push_back({name, OnGuiThread(), std::move(request)});
}

bool CRecordingServices::failure(const QString& name, view::ResponseHeader* answer) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = failures_.find(name);
  if (found == failures_.end()) {
    return false;
  }
  *answer = found.value();
  return true;
}

bool CRecordingServices::failure(const QString& name, std::string* error_info) const {
  view::ResponseHeader answer;
  const bool fails = failure(name, &answer);
  if (fails) {
    *error_info = answer.error_info;
  }
  return fails;
}

void CRecordingServices::waitAt(const QString& name, HoldPoint point) {
  if (OnGuiThread()) {
    return;
  }
  std::unique_lock<std::mutex> lock(mutex_);
  const auto is_held = [this, &name, point] {
    const auto gate = held_.find(name);
    return gate != held_.end() && gate.value() == point;
  };
  if (!is_held()) {
    return;
  }
  ++waiting_[name];
  opened_.wait(lock, [&is_held] { return !is_held(); });
  --waiting_[name];
}

}  // namespace TarnTest
