#pragma once

#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/region_item_info.h"
#include "TarnHost/camera_access.h"
#include "store/camera_names.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// The site's regions and cameras.
struct CameraList {
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
};

struct RegionRow {
  int32_t id = 0, parent = 0;  // 0: at the top
  std::string name;
};

struct CameraRow {
  int32_t id = 0, region = 0;
  std::string name;
};

/// The statements on regions and cameras. Throws CStoreError, which never holds a password. Thread: the engine's.
class CCameraRepository {
 public:
  explicit CCameraRepository(CSqlEngine& engine) : engine_(engine) {}

  CameraList List();
  std::vector<NamedCamera> Names();
  /// These two have no value for a camera that does not exist.
  std::optional<std::list<ptz_plugin_protocol::PresetInfo>> Presets(int32_t camera);
  std::optional<std::list<int32_t>> StreamTypes(int32_t camera);
  std::vector<std::string> Favorites(int32_t user);
  /// False when a camera that does not exist was to become a favourite.
  bool SetFavorite(int32_t user, int32_t camera, bool favorite);

  /// Of these cameras; without codes that are none.
  CameraAccessList Access(const std::vector<int32_t>& cameras);
  bool IsPretended();
  std::string Authority();
  void SetAuthority(const std::string& pem);

  std::map<int32_t, RegionRow> Regions();
  std::map<int32_t, CameraRow> Cameras();
  /// The first of so many numbers that no other ever had, whatever became of it.
  int32_t NewCameras(int32_t count) { return NewNumbers("camera", count); }
  int32_t NewRegions(int32_t count) { return NewNumbers("region", count); }
  /// These take any number of rows; one that is there already gets the new content.
  void Put(const std::vector<RegionRow>& rows);
  void Put(const std::vector<CameraRow>& rows);
  void PutStreams(const std::vector<std::pair<int32_t, CameraStream>>& streams_by_camera);
  /// User, password and device's address, under the number of the camera.
  void PutAccess(const std::map<int32_t, CameraAccess>& access_by_camera);
  void RemoveStreams(const std::vector<std::pair<int32_t, CameraStream>>& streams_by_camera);
  /// With the cameras' streams, presets, access and all that users keep of them.
  void RemoveCameras(const std::vector<int32_t>& cameras);
  void RemoveRegions(const std::vector<int32_t>& regions);
  void SetPresets(int32_t camera, const std::vector<ptz_plugin_protocol::PresetInfo>& presets);

 private:
  bool Has(int32_t camera);
  std::map<int32_t, CameraAccess> ReadAccess(const std::vector<int32_t>& cameras);
  int32_t NewNumbers(const char* table, int32_t count);
  void ExecuteInParts(const QString& before, const QString& row, const QString& behind,
                      const std::vector<QVariantList>& rows);
  /// `rows` is a table with a condition that ends in a column.
  void RemoveAll(const QString& rows, const std::vector<int32_t>& numbers);

  CSqlEngine& engine_;
};

}  // namespace TarnHost::Store
