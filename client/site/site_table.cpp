#include "site/site_table.h"

#include <QCollator>
#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "MarUIControl/string_conversion.h"
#include "TarnHost/host_services.h"
#include "wall/window_truth.h"

namespace TarnClient {

namespace {

// Rows changed past the program may stand below themselves.
constexpr size_t kMostLevels = 32;

template <class Rows, class Places>
auto Find(const Rows& rows, const Places& places, const std::string& code) {
  const auto found = places.find(code);
  return found == places.end() ? nullptr : &rows[found->second];
}

template <class Rows, class Places>
void NotePlaces(const Rows& rows, Places* places) {
  places->clear();
  for (size_t place = 0; place < rows.size(); ++place) {
    places->emplace(rows[place].index_code, place);
  }
}

void SortByPath(std::vector<std::pair<QString, std::string>>* paths) {
  const QCollator collator;
  std::vector<std::pair<QCollatorSortKey, const std::pair<QString, std::string>*>> keyed;
  for (const auto& path : *paths) {
    keyed.emplace_back(collator.sortKey(path.first), &path);
  }
  std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::pair<QString, std::string>> sorted;
  for (const auto& one : keyed) {
    sorted.push_back(*one.second);
  }
  *paths = std::move(sorted);
}

}  // namespace

std::shared_ptr<const SiteTable> SiteTable::Read(std::string* error) {
  const auto services = TarnHost::InstalledHostServices();
  auto table = std::make_shared<SiteTable>();
  if (!services || !services->GetCameraTree(table->regions, table->cameras, error)) {
    return nullptr;
  }
  std::vector<std::string> codes;
  for (const auto& camera : table->cameras) {
    codes.push_back(camera.index_code);
  }
  TarnHost::CameraAccessList list;
  if (!services->GetCameraAccess(codes, list, error)) {
    return nullptr;
  }
  for (TarnHost::CameraAccess& access : list.cameras) {
    if (access.needs_store) {  // what is not known would be written over, or left out of a table
      *error = MarUIControl::QStringToString(TextOf(PictureLoss::NeedsStore));
      return nullptr;
    }
    const std::string code = access.index_code;
    table->access[code] = std::move(access);
  }
  table->authority = list.authority;
  table->Arrange();
  return table;
}

void SiteTable::Arrange() {
  NotePlaces(regions, &region_places_);
  NotePlaces(cameras, &camera_places_);
  below_.clear();
  for (const auto& region : regions) {
    below_[region.parent_index_code].regions.push_back(region.index_code);
  }
  for (const auto& camera : cameras) {
    below_[camera.region_index_code].cameras.push_back(camera.index_code);
  }
  path_by_region_.clear();
  paths_.clear();
  for (const auto& region : regions) {
    FindPath(region.index_code);
    paths_.emplace_back(path_by_region_[region.index_code], region.index_code);
  }
  SortByPath(&paths_);
}

// From the next region above whose path is known already.
void SiteTable::FindPath(const std::string& region) {
  std::vector<const ResourceTreeKit::CRegionItemInfo*> unknown;
  const auto* row = Region(region);
  while (row && path_by_region_.count(row->index_code) == 0 && unknown.size() < kMostLevels) {
    unknown.push_back(row);
    row = Region(row->parent_index_code);
  }
  QString path;
  if (row) {
    path = path_by_region_[row->index_code];
  }
  for (auto next = unknown.rbegin(); next != unknown.rend(); ++next) {
    if (!path.isEmpty()) {
      path += QLatin1Char('/');
    }
    path += QString::fromStdString((*next)->name);
    path_by_region_[(*next)->index_code] = path;
  }
}

const ResourceTreeKit::CRegionItemInfo* SiteTable::Region(const std::string& code) const {
  return Find(regions, region_places_, code);
}

const ResourceTreeKit::CCameraItemInfo* SiteTable::Camera(const std::string& code) const {
  return Find(cameras, camera_places_, code);
}

QString SiteTable::PathOf(const std::string& region) const {
  const auto found = path_by_region_.find(region);
  return found == path_by_region_.end() ? QString() : found->second;
}

std::string SiteTable::Address(const std::string& camera, int32_t stream) const {
  const auto found = access.find(camera);
  if (found != access.end()) {
    for (const TarnHost::CameraStream& known : found->second.streams) {
      if (known.type == stream) {
        return known.url;
      }
    }
  }
  return {};
}

SiteTable::Below SiteTable::CollectBelow(const std::vector<std::string>& regions_at_top) const {
  Below all;
  std::unordered_set<std::string> seen;
  const auto add = [&all, &seen](const std::vector<std::string>& codes) {
    std::copy_if(codes.begin(), codes.end(), std::back_inserter(all.regions),
                 [&seen](const std::string& code) { return !code.empty() && seen.insert(code).second; });
  };
  add(regions_at_top);
  for (size_t place = 0; place < all.regions.size(); ++place) {
    const auto below = below_.find(all.regions[place]);
    if (below != below_.end()) {
      all.cameras.insert(all.cameras.end(), below->second.cameras.begin(), below->second.cameras.end());
      add(below->second.regions);
    }
  }
  std::reverse(all.regions.begin(), all.regions.end());
  return all;
}

}  // namespace TarnClient
