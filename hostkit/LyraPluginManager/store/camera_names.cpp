#include "store/camera_names.h"

namespace TarnHost::Store {
namespace {

// A row changed past the program must not take all memory.
constexpr uint32_t kHighestNumber = 10'000'000;

}  // namespace

const std::string* CFoundCameras::FirstOf(const std::vector<uint32_t>& cameras) const {
  for (const uint32_t camera : cameras) {
    if (camera < places_.size() && places_[camera] >= 0) {
      return &names_[static_cast<size_t>(places_[camera])];
    }
  }
  return nullptr;
}

void CCameraNames::Add(const std::vector<NumberedCamera>& cameras) {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (const auto& [number, camera] : cameras) {
    if (number > kHighestNumber || !numbers_.try_emplace(KeyOf(camera), number).second) {
      continue;
    }
    if (cameras_.size() <= number) {
      cameras_.resize(number + size_t(1));
    }
    cameras_[number] = {camera.code, {camera.name, fold_(camera.name)}, {}};
    Renew(&cameras_[number]);
  }
}

uint32_t CCameraNames::NumberOf(const NamedCamera& camera) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto known = numbers_.find(KeyOf(camera));
  return known == numbers_.end() ? 0 : known->second;
}

void CCameraNames::Clear() {
  const std::lock_guard<std::mutex> lock(mutex_);
  cameras_.clear();
  numbers_.clear();
}

void CCameraNames::Renew(Camera* camera) const {
  camera->at_site = {};
  const auto found = at_site_.find(camera->code);
  if (found != at_site_.end() && found->second != camera->in_window.text) {
    camera->at_site = {found->second, fold_(found->second)};
  }
}

void CCameraNames::SetSiteNames(const std::vector<NamedCamera>& cameras) {
  std::unordered_map<std::string, std::string> names;
  names.reserve(cameras.size());
  for (const NamedCamera& camera : cameras) {
    names.emplace(camera.code, camera.name);
  }
  const std::lock_guard<std::mutex> lock(mutex_);
  if (names == at_site_) {
    return;
  }
  at_site_.swap(names);
  for (Camera& camera : cameras_) {
    Renew(&camera);
  }
}

CFoundCameras CCameraNames::Find(const std::string& folded) const {
  CFoundCameras found;
  const std::lock_guard<std::mutex> lock(mutex_);
  found.places_.assign(cameras_.size(), -1);
  for (size_t number = 0; number < cameras_.size(); ++number) {
    for (const Name* name : {&cameras_[number].in_window, &cameras_[number].at_site}) {
      if (name->folded.find(folded) != std::string::npos) {
        found.places_[number] = static_cast<int32_t>(found.names_.size());
        found.names_.push_back(name->text);
        break;
      }
    }
  }
  return found;
}

}  // namespace TarnHost::Store
