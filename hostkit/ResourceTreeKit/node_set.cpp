#include "ResourceTreeKit/node_set.h"

#include <algorithm>
#include <utility>

namespace ResourceTreeKit {

CNodeSet::CNodeSet(std::vector<int> nodes) : nodes_(std::move(nodes)) {
  std::sort(nodes_.begin(), nodes_.end());
  nodes_.erase(std::unique(nodes_.begin(), nodes_.end()), nodes_.end());
}

bool CNodeSet::Contains(int node) const {
  return std::binary_search(nodes_.begin(), nodes_.end(), node);
}

int CNodeSet::PlaceOf(int node) const {
  return static_cast<int>(std::lower_bound(nodes_.begin(), nodes_.end(), node) - nodes_.begin());
}

void CNodeSet::Insert(int node) {
  if (!Contains(node)) {
    nodes_.insert(nodes_.begin() + PlaceOf(node), node);
  }
}

void CNodeSet::Remove(int node) {
  if (Contains(node)) {
    nodes_.erase(nodes_.begin() + PlaceOf(node));
  }
}

}  // namespace ResourceTreeKit
