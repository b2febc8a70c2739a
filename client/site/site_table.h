#pragma once

#include <QString>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/region_item_info.h"
#include "TarnHost/camera_access.h"

namespace TarnClient {

/// The site's regions and cameras with how their pictures are reached, as they were when it was read. Thread: any.
struct SiteTable {
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  std::map<std::string, TarnHost::CameraAccess> access;  // by the camera's code
  std::string authority;

  /// Asks the service; null with a text in `error` when it does not say.
  static std::shared_ptr<const SiteTable> Read(std::string* error);

  /// Finds its way in regions and cameras; once they are complete, before what is below is asked for.
  void Arrange();
  /// The region's name behind those above it, "House/Hall"; empty for the top and for one that is not there.
  QString PathOf(const std::string& region) const;
  /// Paths and codes of all regions, in the order of their paths.
  const std::vector<std::pair<QString, std::string>>& Paths() const { return paths_; }
  const ResourceTreeKit::CRegionItemInfo* Region(const std::string& code) const;
  const ResourceTreeKit::CCameraItemInfo* Camera(const std::string& code) const;
  /// The address of a stream; empty for none.
  std::string Address(const std::string& camera, int32_t stream) const;

  struct Below {
    std::vector<std::string> regions, cameras;
  };
  /// These regions with all regions and cameras below them, each once, the inner ones first.
  Below CollectBelow(const std::vector<std::string>& regions_at_top) const;

 private:
  void FindPath(const std::string& region);

  std::unordered_map<std::string, size_t> region_places_, camera_places_;
  std::unordered_map<std::string, Below> below_;  // of each region, without what is below that
  std::unordered_map<std::string, QString> path_by_region_;
  std::vector<std::pair<QString, std::string>> paths_;
};

}  // namespace TarnClient
