#include "store/camera_names.h"

#include <algorithm>

namespace TarnHost::Store {

const std::string* CFoundCameras::FirstOf(const std::vector<uint32_t>& cameras) const {
  for (const uint32_t camera : cameras) {
    if (camera < places_.size() && places_[camera] >= 0) {
      return &names_[static_cast<size_t>(places_[camera])];
    }
  }
  return nullptr;
}

std::vector<uint32_t> CCameraNames::NumbersOf(const std::vector<NamedCamera>& cameras) {
  std::vector<uint32_t> numbers;
  numbers.reserve(cameras.size());
  const std::lock_guard<std::mutex> lock(mutex_);
  for (const NamedCamera& camera : cameras) {
    const uint32_t number = NumberOf(camera);
    if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

uint32_t CCameraNames::NumberOf(const NamedCamera& camera) {
  const auto [known, is_new] =
      numbers_.try_emplace(camera.code + '\n' + camera.name, static_cast<uint32_t>(cameras_.size()));
  if (is_new) {
    cameras_.push_back({camera.code, {camera.name, fold_(camera.name)}, {}});
    Renew(&cameras_.back());
  }
  return known->second;
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
