#pragma once

#include <vector>

#include "ResourceTreeKit/camera_content.h"

namespace ResourceTreeKit {

/// Which rows of a content are shown, and where among their neighbours. Thread: any.
class CCameraRows {
 public:
  CCameraRows() = default;
  /// `shown` has one entry a row; what is above a shown row must be shown, too.
  CCameraRows(const CCameraContent& content, const std::vector<char>& shown);
  static CCameraRows All(const CCameraContent& content);

  int ChildCount(int node) const { return Get(counts_, node); }
  int ChildAt(int node, int row) const { return Get(order_, Get(firsts_, node) + row); }
  /// -1 for a row that is not shown.
  int RowOf(int node) const { return Get(rows_, node); }
  bool IsShown(int node) const { return RowOf(node) >= 0; }
  int CameraCount() const { return cameras_; }

 private:
  static int Get(const std::vector<int>& numbers, int at) { return numbers[static_cast<size_t>(at)]; }

  std::vector<int> order_;                   // the shown rows, breadth first
  std::vector<int> firsts_, counts_, rows_;  // one entry a row of the content
  int cameras_ = 0;
};

}  // namespace ResourceTreeKit
