#include "site/site_rows.h"

#include <QCollator>
#include <algorithm>
#include <map>
#include <utility>

#include "TarnHost/camera_address.h"

namespace TarnClient {

namespace {

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

QString ShownUrl(const std::string& url) {
  return url.empty() ? QString() : TarnHost::ShownCameraAddress(url);
}

/// Puts the rows together from the top down.
class CBuilder {
 public:
  CBuilder(const SiteTable& site, const QString& filter) : site_(site), filter_(filter.trimmed()) {
    collator_.setNumericMode(true);
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    for (const auto& region : site.regions) {
      known_[region.index_code] = true;
    }
    for (const auto& region : site.regions) {
      below_[AboveOf(region.parent_index_code)].first.push_back(&region);
    }
    for (const auto& camera : site.cameras) {
      below_[AboveOf(camera.region_index_code)].second.push_back(&camera);
    }
    rows_.regions = static_cast<int>(site.regions.size());
    rows_.cameras = static_cast<int>(site.cameras.size());
  }

  SiteRows Run() {
    rows_.top = Add({}, -1, filter_.isEmpty());
    return std::move(rows_);
  }

 private:
  using Regions = std::vector<const ResourceTreeKit::CRegionItemInfo*>;
  using Cameras = std::vector<const ResourceTreeKit::CCameraItemInfo*>;

  std::string AboveOf(const std::string& region) const { return known_.count(region) != 0 ? region : std::string(); }
  bool Holds(const QString& text) const { return text.contains(filter_, Qt::CaseInsensitive); }

  // A region is taken once: those that stand below themselves are not reached from the top at all.
  std::vector<int> Add(const std::string& region, int parent, bool is_all) {
    auto [regions, cameras] = std::exchange(below_[region], {});
    Sort(&regions);
    Sort(&cameras);
    std::vector<int> places;
    for (const auto* row : regions) {
      AddRegion(*row, parent, is_all, &places);
    }
    for (const auto* row : cameras) {
      AddCamera(*row, parent, is_all, &places);
    }
    return places;
  }

  template <class Row>
  void Sort(std::vector<const Row*>* rows) const {
    std::vector<std::pair<QCollatorSortKey, const Row*>> keyed;
    for (const Row* row : *rows) {
      keyed.emplace_back(collator_.sortKey(Text(row->name)), row);
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(keyed.begin(), keyed.end(), rows->begin(), [](const auto& one) { return one.second; });
  }

  void AddRegion(const ResourceTreeKit::CRegionItemInfo& region, int parent, bool is_all, std::vector<int>* places) {
    const bool holds = is_all || Holds(Text(region.name));
    const auto place = static_cast<int>(rows_.rows.size());
    rows_.rows.push_back({true, region.index_code, Text(region.name), {}, {}, {}, parent, 0, {}});
    std::vector<int> children = Add(region.index_code, place, holds);
    if (!holds && children.empty()) {
      rows_.rows.pop_back();  // nothing came behind it
      return;
    }
    rows_.rows[static_cast<size_t>(place)].children = std::move(children);
    Place(place, places);
  }

  void AddCamera(const ResourceTreeKit::CCameraItemInfo& camera, int parent, bool is_all, std::vector<int>* places) {
    SiteRow row{false, camera.index_code, Text(camera.name), {}, {}, {}, parent, 0, {}};
    row.main = ShownUrl(site_.Address(camera.index_code, 0));
    row.sub = ShownUrl(site_.Address(camera.index_code, 1));
    const auto access = site_.access.find(camera.index_code);
    if (access != site_.access.end()) {
      row.user = Text(access->second.user);
    }
    const bool holds =
        is_all || Holds(row.name) || Holds(row.main) || Holds(row.sub) || Holds(row.user) || Text(row.code) == filter_;
    if (holds) {
      rows_.rows.push_back(std::move(row));
      Place(static_cast<int>(rows_.rows.size()) - 1, places);
    }
  }

  void Place(int place, std::vector<int>* places) {
    rows_.rows[static_cast<size_t>(place)].row = static_cast<int>(places->size());
    places->push_back(place);
  }

  const SiteTable& site_;
  const QString filter_;
  QCollator collator_;
  std::map<std::string, bool> known_;
  std::map<std::string, std::pair<Regions, Cameras>> below_;
  SiteRows rows_;
};

}  // namespace

SiteRows SiteRows::Of(const SiteTable& site, const QString& filter) {
  return CBuilder(site, filter).Run();
}

}  // namespace TarnClient
