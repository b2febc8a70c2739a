#include "cameras/camera_states.h"

#include <optional>
#include <vector>

#include "TarnHost/host_services.h"
#include "host_calls/ask.h"

namespace TarnClient {

namespace {

using Codes = std::set<std::string>;

// Nothing when the service does not answer: the cameras are as they were, then.
std::optional<Codes> ReadOffline() {
  const auto services = TarnHost::InstalledHostServices();
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  std::string error;
  if (!services || !services->GetCameraTree(regions, cameras, &error)) {
    return std::nullopt;
  }
  Codes offline;
  for (const auto& camera : cameras) {
    if (!camera.online) {
      offline.insert(camera.index_code);
    }
  }
  return offline;
}

}  // namespace

CCameraStates::CCameraStates(QObject* parent, int again_ms) : QObject(parent) {
  again_.setInterval(again_ms);
  connect(&again_, &QTimer::timeout, this, &CCameraStates::Ask);
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
  HostCalls::Ask(&ReadOffline).Replacing(question_).Then(this, [this](const std::optional<Codes>& offline) {
    offline_ = offline.value_or(offline_);
  });
}

}  // namespace TarnClient
