#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "TarnHost/camera_access.h"
#include "TarnHost/camera_address.h"
#include "store/camera_repository.h"
#include "store/store_text.h"

namespace TarnHost::Store {

/// Makes the changes of regions and cameras that belong together, inside the caller's transaction. Works out first what
/// all becomes and refuses what cannot be; then writes what is another than before. Once. Throws CStoreError. Thread:
/// the engine's.
class CCameraBatch {
 public:
  explicit CCameraBatch(CCameraRepository& repository) : repository_(repository) {}

  CameraChangesMade Run(const CameraChanges& changes);

 private:
  void Read(const CameraChanges& changes);
  void NumberRegions(const std::vector<CameraChanges::Region>& regions);
  void TakeRegions(const std::vector<CameraChanges::Region>& regions);
  void TakeCameras(const std::vector<CameraChanges::Camera>& cameras);
  void TakeCamera(const CameraChanges::Camera& change, int32_t id);
  void TakeAccess(const CameraChanges::Camera& change, int32_t id);
  void TakeStream(const CameraStream& stream, int32_t id, CameraSignIn* in_addresses);
  void TakePresets(const CameraChanges::Camera& change, int32_t id);
  void TakeRemovals(const CameraChanges& changes);
  void DropChanges(int32_t camera);
  int32_t RegionOf(const std::string& code) const;
  void CheckRegions() const;
  void CheckLevel(const RegionRow& region) const;
  void CheckEmpty() const;
  void Write();
  int CountChanges() const;

  CCameraRepository& repository_;
  std::map<int32_t, RegionRow> regions_;  // as they become
  std::map<int32_t, CameraRow> cameras_;
  std::map<int32_t, CameraAccess> access_;        // as it is at first, of the cameras that are changed
  std::vector<int32_t> region_ids_, camera_ids_;  // in the order of the changes

  // What is to be written.
  std::set<int32_t> changed_regions_, changed_cameras_;
  std::set<int32_t> moved_regions_;  // of the changed ones, those that hang elsewhere
  std::map<int32_t, CameraAccess> changed_access_;
  std::vector<std::pair<int32_t, CameraStream>> put_streams_, removed_streams_;
  std::map<int32_t, std::vector<ptz_plugin_protocol::PresetInfo>> presets_;
  std::map<int32_t, RegionRow> removed_regions_;
  std::vector<int32_t> removed_cameras_;
};

}  // namespace TarnHost::Store
