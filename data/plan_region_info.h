#pragma once

#include <list>
#include <memory>
#include <string>

#include "ResourceData/resource_type.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// A region of the resource tree.
struct PlanRegionInfo {
  std::string index_code;
  std::string name;
  std::string parent_index_code;
  std::string str_region_path;             // the way from the top as one text
  std::list<std::string> lst_region_path;  // the same as index codes
  int total_quantity = 0;                  // cameras below the region
  int total_online_quantity = 0;
  ResourceData::CascadeType cascade_type = ResourceData::CT_LOCAL;
};

/// Handle on a PlanRegionInfo.
/// Copies share one body: what is set through one handle is seen through all of them.
class TARNPLANVIEW_EXPORT CPlanRegionInfo {
 public:
  CPlanRegionInfo();
  explicit CPlanRegionInfo(const PlanRegionInfo& record);
  explicit CPlanRegionInfo(std::shared_ptr<PlanRegionInfo> body);
  CPlanRegionInfo(const CPlanRegionInfo& other);
  CPlanRegionInfo& operator=(const CPlanRegionInfo& other);
  virtual ~CPlanRegionInfo();

  std::shared_ptr<PlanRegionInfo> GetDataPtr() const;
  void SetData(const PlanRegionInfo& record);

  std::string GetVal_index_code();
  void SetVal_index_code(const std::string& value);
  std::string GetVal_name();
  void SetVal_name(const std::string& value);
  std::string GetVal_parent_index_code();
  void SetVal_parent_index_code(const std::string& value);
  std::string GetVal_str_region_path();
  void SetVal_str_region_path(const std::string& value);
  std::list<std::string> GetVal_lst_region_path();
  void SetVal_lst_region_path(const std::list<std::string>& value);
  int GetVal_total_quantity() const;
  void SetVal_total_quantity(const int& value);
  int GetVal_total_online_quantity() const;
  void SetVal_total_online_quantity(const int& value);
  ResourceData::CascadeType GetVal_cascade_type();
  void SetVal_cascade_type(const ResourceData::CascadeType& value);

 private:
  std::shared_ptr<PlanRegionInfo> data_;
};

}  // namespace TarnPlanView
