#include "plan_region_info.h"

#include <utility>

namespace TarnPlanView {

CPlanRegionInfo::CPlanRegionInfo() : data_(std::make_shared<PlanRegionInfo>()) {}
CPlanRegionInfo::CPlanRegionInfo(const PlanRegionInfo& record) : data_(std::make_shared<PlanRegionInfo>(record)) {}
CPlanRegionInfo::CPlanRegionInfo(std::shared_ptr<PlanRegionInfo> body) : data_(std::move(body)) {}
CPlanRegionInfo::CPlanRegionInfo(const CPlanRegionInfo& other) = default;
CPlanRegionInfo& CPlanRegionInfo::operator=(const CPlanRegionInfo& other) = default;
CPlanRegionInfo::~CPlanRegionInfo() = default;

std::shared_ptr<PlanRegionInfo> CPlanRegionInfo::GetDataPtr() const {
  return data_;
}
void CPlanRegionInfo::SetData(const PlanRegionInfo& record) {
  *data_ = record;
}

std::string CPlanRegionInfo::GetVal_index_code() {
  return data_->index_code;
}
void CPlanRegionInfo::SetVal_index_code(const std::string& value) {
  data_->index_code = value;
}
std::string CPlanRegionInfo::GetVal_name() {
  return data_->name;
}
void CPlanRegionInfo::SetVal_name(const std::string& value) {
  data_->name = value;
}
std::string CPlanRegionInfo::GetVal_parent_index_code() {
  return data_->parent_index_code;
}
void CPlanRegionInfo::SetVal_parent_index_code(const std::string& value) {
  data_->parent_index_code = value;
}
std::string CPlanRegionInfo::GetVal_str_region_path() {
  return data_->str_region_path;
}
void CPlanRegionInfo::SetVal_str_region_path(const std::string& value) {
  data_->str_region_path = value;
}
std::list<std::string> CPlanRegionInfo::GetVal_lst_region_path() {
  return data_->lst_region_path;
}
void CPlanRegionInfo::SetVal_lst_region_path(const std::list<std::string>& value) {
  data_->lst_region_path = value;
}
int CPlanRegionInfo::GetVal_total_quantity() const {
  return data_->total_quantity;
}
void CPlanRegionInfo::SetVal_total_quantity(const int& value) {
  data_->total_quantity = value;
}
int CPlanRegionInfo::GetVal_total_online_quantity() const {
  return data_->total_online_quantity;
}
void CPlanRegionInfo::SetVal_total_online_quantity(const int& value) {
  data_->total_online_quantity = value;
}
ResourceData::CascadeType CPlanRegionInfo::GetVal_cascade_type() {
  return data_->cascade_type;
}
void CPlanRegionInfo::SetVal_cascade_type(const ResourceData::CascadeType& value) {
  data_->cascade_type = value;
}

}  // namespace TarnPlanView
