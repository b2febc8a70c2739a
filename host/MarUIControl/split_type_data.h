#pragma once

namespace MarUIControl {

/// How a page of a plan is divided into windows.
struct struSplitTypeData {
  /// The value that PlanPage::split_type holds.
  enum SplitType {
    Split1 = 1,   ///< One window.
    Split4 = 2,   ///< 2 x 2 windows.
    Split9 = 4,   ///< 3 x 3 windows.
    Split16 = 8,  ///< 4 x 4 windows.
  };
};

}  // namespace MarUIControl
