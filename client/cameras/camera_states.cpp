#include "cameras/camera_states.h"

#include <optional>
#include <utility>
#include <vector>

#include "TarnHost/host_services.h"
#include "host_calls/ask.h"

namespace TarnClient {

namespace {

// Nothing when the service does not answer: the cameras are as they were, then.
std::optional<CCameraStates::Records> ReadCameras() {
  const auto services = TarnHost::InstalledHostServices();
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  std::string error;
  if (!services || !services->GetCameraTree(regions, cameras, &error)) {
    return std::nullopt;
  }
  CCameraStates::Records records;
  for (const auto& camera : cameras) {
    records.names[camera.index_code] = camera.name;
    if (!camera.online) {
      records.offline.insert(camera.index_code);
    }
  }
  return records;
}

}  // namespace

CCameraStates::CCameraStates(QObject* parent, int again_ms) : QObject(parent) {
  again_.setInterval(again_ms);
  connect(&again_, &QTimer::timeout, this, &CCameraStates::Ask);
  connect(&notice_, &CCameraNotice::SignalCamerasChanged, this, [this] {
    is_outdated_ = question_.IsUnderWay();
    Ask();
    Q_EMIT SignalChanged();
  });
  Ask();
}

void CCameraStates::Watch(bool on) {
  if (on && !again_.isActive()) {
    again_.start();
    Ask();
  } else if (!on) {
    again_.stop();
  }
}

// A call that is late is not joined by others: each reads the whole tree of cameras.
void CCameraStates::Ask() {
  if (question_.IsUnderWay()) {
    return;
  }
  HostCalls::Ask(&ReadCameras).Replacing(question_).Then(this, [this](const std::optional<Records>& records) {
    if (records) {
      Take(*records);
    }
    if (std::exchange(is_outdated_, false)) {
      Ask();
    }
  });
}

void CCameraStates::Take(const Records& records) {
  const bool is_changed = records.offline != records_.offline || records.names != records_.names;
  records_ = records;
  if (is_changed) {
    Q_EMIT SignalChanged();
  }
}

std::string CCameraStates::NameOf(const std::string& camera_code) const {
  const auto found = records_.names.find(camera_code);
  if (found == records_.names.end()) {
    return std::string();
  }
  return found->second;
}

}  // namespace TarnClient
