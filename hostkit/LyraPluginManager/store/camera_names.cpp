#include "store/camera_names.h"

#include <algorithm>

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
  Take(cameras);
}

// At once: a search that comes in between would find nothing.
void CCameraNames::Replace(const std::vector<NumberedCamera>& cameras) {
  const std::lock_guard<std::mutex> lock(mutex_);
  cameras_.clear();
  places_.clear();
  numbers_.clear();
  Take(cameras);
}

void CCameraNames::Take(const std::vector<NumberedCamera>& cameras) {
  for (const auto& [number, camera] : cameras) {
    if (number > kHighestNumber || !numbers_.try_emplace(KeyOf(camera), number).second) {
      continue;
    }
    if (places_.size() <= number) {
      places_.resize(number + size_t(1), -1);
    }
    places_[number] = static_cast<int32_t>(cameras_.size());
    cameras_.push_back({camera.code, {camera.name, fold_(camera.name)}, {}});
    Renew(&cameras_.back());
  }
}

bool CCameraNames::HasAll(const std::vector<uint32_t>& numbers) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::all_of(numbers.begin(), numbers.end(),
                     [this](uint32_t number) { return number < places_.size() && places_[number] >= 0; });
}

uint32_t CCameraNames::NumberOf(const NamedCamera& camera) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto known = numbers_.find(KeyOf(camera));
  return known == numbers_.end() ? 0 : known->second;
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

template <class Matches>
CFoundCameras CCameraNames::FindWhere(const Matches& name_that_matches) const {
  CFoundCameras found;
  const std::lock_guard<std::mutex> lock(mutex_);
  found.places_.assign(places_.size(), -1);
  for (size_t number = 0; number < places_.size(); ++number) {
    const Name* name = nullptr;
    if (places_[number] >= 0) {
      name = name_that_matches(cameras_[static_cast<size_t>(places_[number])]);
    }
    if (name != nullptr) {
      found.places_[number] = static_cast<int32_t>(found.names_.size());
      found.names_.push_back(name->text);
    }
  }
  return found;
}

CFoundCameras CCameraNames::Find(const std::string& folded) const {
  return FindWhere([&folded](const Camera& camera) -> const Name* {
    for (const Name* name : {&camera.in_window, &camera.at_site}) {
      if (name->folded.find(folded) != std::string::npos) {
        return name;
      }
    }
    return nullptr;
  });
}

CFoundCameras CCameraNames::FindCodes(const std::set<std::string>& codes) const {
  return FindWhere([&codes](const Camera& camera) -> const Name* {
    return codes.count(camera.code) == 0 ? nullptr : &camera.in_window;
  });
}

}  // namespace TarnHost::Store
