#include "ResourceTreeKit/camera_rows.h"

namespace ResourceTreeKit {

CCameraRows::CCameraRows(const CCameraContent& content, const std::vector<char>& shown) {
  const size_t size = content.Nodes().size();
  firsts_.resize(size);
  counts_.resize(size);
  rows_.assign(size, -1);
  for (size_t node = 1; node < size; ++node) {
    if (!shown[node]) {
      continue;
    }
    const auto parent = static_cast<size_t>(content.Nodes()[node].parent);
    if (counts_[parent] == 0) {
      firsts_[parent] = static_cast<int>(order_.size());
    }
    rows_[node] = counts_[parent]++;
    order_.push_back(static_cast<int>(node));
    if (content.Nodes()[node].IsCamera()) {
      ++cameras_;
    }
  }
}

CCameraRows CCameraRows::All(const CCameraContent& content) {
  return CCameraRows(content, std::vector<char>(content.Nodes().size(), 1));
}

}  // namespace ResourceTreeKit
