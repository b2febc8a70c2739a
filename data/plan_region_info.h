#pragma once

#include <list>
#include <memory>
#include <string>

#include "ResourceData/resource_type.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// A region of the resource tree. Texts are UTF-8. A plain value.
struct PlanRegionInfo {
  std::string index_code;         ///< Its code.
  std::string name;               ///< As shown.
  std::string parent_index_code;  ///< Code of the region that it stands in.
  /// The way from the top as one text, in the form and with the separator that the host's own trees have: the plug-in
  /// neither makes it nor takes it apart.
  std::string str_region_path;
  std::list<std::string> lst_region_path;                           ///< The same as index codes, the top first.
  int total_quantity = 0;                                           ///< Cameras below the region, on all levels.
  int total_online_quantity = 0;                                    ///< Those of them that can be reached.
  ResourceData::CascadeType cascade_type = ResourceData::CT_LOCAL;  ///< Whose region it is.
};

/// Handle on a PlanRegionInfo. Copies share one body: what is set through one handle is seen through all of them.
/// Thread: one at a time.
class TARNPLANVIEW_EXPORT CPlanRegionInfo {
 public:
  /// A body of its own, as a new PlanRegionInfo is.
  CPlanRegionInfo();
  /// A body of its own with these values.
  explicit CPlanRegionInfo(const PlanRegionInfo& record);
  /// Over this body, which must not be null.
  explicit CPlanRegionInfo(std::shared_ptr<PlanRegionInfo> body);
  /// Over the same body.
  CPlanRegionInfo(const CPlanRegionInfo& other);
  /// Over the same body.
  CPlanRegionInfo& operator=(const CPlanRegionInfo& other);
  virtual ~CPlanRegionInfo();

  /// The body.
  std::shared_ptr<PlanRegionInfo> GetDataPtr() const;
  /// Puts these values into the body, for all handles on it.
  void SetData(const PlanRegionInfo& record);

  /// Reads or sets the field of the body that is named behind the underscore.
  ///@{
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
  ///@}

 private:
  std::shared_ptr<PlanRegionInfo> data_;
};

}  // namespace TarnPlanView
