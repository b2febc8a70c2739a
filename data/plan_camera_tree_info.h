#pragma once

#include <memory>

#include "ResourceTreeKit/camera_item_info.h"
#include "plan_region_info.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// A camera in a resource tree. A plain value.
struct PlanCameraTreeInfo {
  CPlanRegionInfo stTreeItemInfo_;                 ///< The node the camera hangs under.
  ResourceTreeKit::CCameraItemInfo stCameraInfo_;  ///< The camera.
  /// Kind of the entry. The numbers are those of the host that fills the record: the plug-in hands them on and knows
  /// none of them. 0 in a new record.
  int emType_ = 0;
};

/// Handle on a PlanCameraTreeInfo. Copies share one body: what is set through one handle is seen through all of them.
/// Thread: one at a time.
class TARNPLANVIEW_EXPORT CPlanCameraTreeInfo {
 public:
  /// A body of its own, as a new PlanCameraTreeInfo is.
  CPlanCameraTreeInfo();
  /// A body of its own with these values.
  explicit CPlanCameraTreeInfo(const PlanCameraTreeInfo& record);
  /// Over this body, which must not be null.
  explicit CPlanCameraTreeInfo(std::shared_ptr<PlanCameraTreeInfo> body);
  /// Over the same body.
  CPlanCameraTreeInfo(const CPlanCameraTreeInfo& other);
  /// Over the same body.
  CPlanCameraTreeInfo& operator=(const CPlanCameraTreeInfo& other);
  virtual ~CPlanCameraTreeInfo();

  /// The body.
  std::shared_ptr<PlanCameraTreeInfo> GetDataPtr() const;
  /// Puts these values into the body, for all handles on it.
  void SetData(const PlanCameraTreeInfo& record);

  /// Reads or sets the field of the body that is named behind the underscore.
  ///@{
  CPlanRegionInfo GetVal_stTreeItemInfo_();
  void SetVal_stTreeItemInfo_(const CPlanRegionInfo& value);
  ResourceTreeKit::CCameraItemInfo GetVal_stCameraInfo_();
  void SetVal_stCameraInfo_(ResourceTreeKit::CCameraItemInfo& value);
  int GetVal_emType_() const;
  void SetVal_emType_(const int& value);
  ///@}

 private:
  std::shared_ptr<PlanCameraTreeInfo> data_;
};

}  // namespace TarnPlanView
