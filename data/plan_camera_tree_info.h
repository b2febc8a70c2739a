#pragma once

#include <memory>

#include "ResourceTreeKit/camera_item_info.h"
#include "plan_region_info.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// A camera in a resource tree.
struct PlanCameraTreeInfo {
  CPlanRegionInfo stTreeItemInfo_;  // the node the camera hangs under
  ResourceTreeKit::CCameraItemInfo stCameraInfo_;
  int emType_ = 0;  // kind of the entry
};

/// Handle on a PlanCameraTreeInfo.
/// Copies share one body: what is set through one handle is seen through all of them.
class TARNPLANVIEW_EXPORT CPlanCameraTreeInfo {
 public:
  CPlanCameraTreeInfo();
  explicit CPlanCameraTreeInfo(const PlanCameraTreeInfo& record);
  explicit CPlanCameraTreeInfo(std::shared_ptr<PlanCameraTreeInfo> body);
  CPlanCameraTreeInfo(const CPlanCameraTreeInfo& other);
  CPlanCameraTreeInfo& operator=(const CPlanCameraTreeInfo& other);
  virtual ~CPlanCameraTreeInfo();

  std::shared_ptr<PlanCameraTreeInfo> GetDataPtr() const;
  void SetData(const PlanCameraTreeInfo& record);

  CPlanRegionInfo GetVal_stTreeItemInfo_();
  void SetVal_stTreeItemInfo_(const CPlanRegionInfo& value);
  ResourceTreeKit::CCameraItemInfo GetVal_stCameraInfo_();
  void SetVal_stCameraInfo_(ResourceTreeKit::CCameraItemInfo& value);
  int GetVal_emType_() const;
  void SetVal_emType_(const int& value);

 private:
  std::shared_ptr<PlanCameraTreeInfo> data_;
};

}  // namespace TarnPlanView
