#pragma once

namespace MarUIControl {

struct struSplitTypeData {
  enum SplitType { Split1 = 1, Split4 = 2, Split9 = 4, Split16 = 8 };
};

}  // namespace MarUIControl
