#pragma once

#include "MarUIControl/split_type_data.h"

// How a page is divided into windows.
namespace view_plugin_protocol {

/// Windows along each side of a page with this split type: 1, 2, 3 or 4. An unknown type counts as one window.
inline int SideOfSplit(int split_type) {
  switch (split_type) {
    case MarUIControl::struSplitTypeData::Split4:
      return 2;
    case MarUIControl::struSplitTypeData::Split9:
      return 3;
    case MarUIControl::struSplitTypeData::Split16:
      return 4;
    default:
      return 1;
  }
}

/// Windows of a page with this split type: 1, 4, 9 or 16. They are numbered from 1, row by row.
inline int WindowsOfSplit(int split_type) {
  return SideOfSplit(split_type) * SideOfSplit(split_type);
}

/// Whether a page can have this split type.
inline bool IsKnownSplit(int split_type) {
  return split_type == MarUIControl::struSplitTypeData::Split1 || SideOfSplit(split_type) > 1;
}

/// The least split that has room for so many windows, else the largest.
inline int SplitFor(int windows) {
  using Splits = MarUIControl::struSplitTypeData;
  for (const int split : {Splits::Split1, Splits::Split4, Splits::Split9}) {
    if (windows <= WindowsOfSplit(split)) {
      return split;
    }
  }
  return Splits::Split16;
}

/// The most windows that a page can have.
constexpr int kMostWindowsOfPage = 16;

}  // namespace view_plugin_protocol
