#pragma once

#include <QString>

#include "MarUIControl/standard_item_model.h"

namespace view_plugin_protocol {

/// The order in which one level of plans and groups is shown, and played: by the rows' item types, so that groups come
/// before plans, then by name as people order names.
inline bool StandsBefore(int left_type, const QString& left_name, int right_type, const QString& right_name) {
  constexpr int kNamesForPeople = 2;
  if (left_type != right_type) {
    return left_type < right_type;
  }
  return MarUIControl::CStandardItemModel::CustomStringCompare(left_name, right_name, kNamesForPeople);
}

}  // namespace view_plugin_protocol
