#pragma once

#include <QString>

#include "MarUIControl/standard_item_model.h"

namespace view_plugin_protocol {

/// As people order names.
inline bool NameStandsBefore(const QString& left, const QString& right) {
  constexpr int kNamesForPeople = 2;
  return MarUIControl::CStandardItemModel::CustomStringCompare(left, right, kNamesForPeople);
}

/// The order in which one level of plans and groups is shown, and played: by the rows' item types, so that groups come
/// before plans, then by what `by_name` says.
template <class ByName>
bool StandsBefore(int left_type, int right_type, const ByName& by_name) {
  if (left_type != right_type) {
    return left_type < right_type;
  }
  return by_name();
}

inline bool StandsBefore(int left_type, const QString& left_name, int right_type, const QString& right_name) {
  return StandsBefore(left_type, right_type, [&] { return NameStandsBefore(left_name, right_name); });
}

}  // namespace view_plugin_protocol
