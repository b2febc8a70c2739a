#include "plan_camera_tree_info.h"

#include <utility>

namespace TarnPlanView {

CPlanCameraTreeInfo::CPlanCameraTreeInfo() : data_(std::make_shared<PlanCameraTreeInfo>()) {}
CPlanCameraTreeInfo::CPlanCameraTreeInfo(const PlanCameraTreeInfo& record)
    : data_(std::make_shared<PlanCameraTreeInfo>(record)) {}
CPlanCameraTreeInfo::CPlanCameraTreeInfo(std::shared_ptr<PlanCameraTreeInfo> body) : data_(std::move(body)) {}
CPlanCameraTreeInfo::CPlanCameraTreeInfo(const CPlanCameraTreeInfo& other) = default;
CPlanCameraTreeInfo& CPlanCameraTreeInfo::operator=(const CPlanCameraTreeInfo& other) = default;
CPlanCameraTreeInfo::~CPlanCameraTreeInfo() = default;

std::shared_ptr<PlanCameraTreeInfo> CPlanCameraTreeInfo::GetDataPtr() const {
  return data_;
}
void CPlanCameraTreeInfo::SetData(const PlanCameraTreeInfo& record) {
  *data_ = record;
}

CPlanRegionInfo CPlanCameraTreeInfo::GetVal_stTreeItemInfo_() {
  return data_->stTreeItemInfo_;
}
void CPlanCameraTreeInfo::SetVal_stTreeItemInfo_(const CPlanRegionInfo& value) {
  data_->stTreeItemInfo_ = value;
}
ResourceTreeKit::CCameraItemInfo CPlanCameraTreeInfo::GetVal_stCameraInfo_() {
  return data_->stCameraInfo_;
}
void CPlanCameraTreeInfo::SetVal_stCameraInfo_(ResourceTreeKit::CCameraItemInfo& value) {
  data_->stCameraInfo_ = value;
}
int CPlanCameraTreeInfo::GetVal_emType_() const {
  return data_->emType_;
}
void CPlanCameraTreeInfo::SetVal_emType_(const int& value) {
  data_->emType_ = value;
}

}  // namespace TarnPlanView
