#pragma once

#include "moving/import_codes.h"
#include "moving/import_plan.h"

namespace TarnHost::Moving {

/// Which regions and cameras come along, and which of those that are there they are. Pure. Thread: any.
class CCameraImport {
 public:
  CCameraImport(const StandingSite& here, bool is_same_site, ImportPlan* plan);

  void TakeRegions(std::vector<RegionRecord> regions);
  void TakeCameras(std::vector<CameraRecord> cameras);

  const Codes& CameraCodes() const { return camera_codes_; }

 private:
  using Cameras = std::map<QString, std::vector<const CameraRecord*>>;

  const RegionRecord* Known(const RegionRecord& region) const;
  const RegionRecord* Namesake(const RegionRecord& region) const;
  QString WhyNot(const RegionRecord& region, const RegionRecord* known) const;
  void TakeRegion(const RegionRecord* known, RegionRecord region);
  const CameraRecord* Known(const CameraRecord& camera) const;
  void AddCamera(CameraRecord camera);
  void ChangeCamera(const CameraRecord& known, CameraRecord camera);

  const bool is_same_site_;
  ImportPlan* const plan_;
  CGivenNumbers region_numbers_, camera_numbers_;
  std::map<int32_t, const RegionRecord*> regions_;
  std::map<std::pair<int32_t, QString>, const RegionRecord*> regions_by_place_;
  std::map<int32_t, int32_t> region_parents_;  // as they become
  std::map<int32_t, const CameraRecord*> cameras_;
  Cameras cameras_by_address_, cameras_by_place_;
  Codes region_codes_ = {{0, 0}}, camera_codes_;
  std::set<int32_t> changed_cameras_;
};

}  // namespace TarnHost::Moving
