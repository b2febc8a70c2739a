#pragma once

#include <cstddef>
#include <vector>

namespace ResourceTreeKit {

/// Some rows of a camera content, each once and in the content's order. Thread: any.
class CNodeSet {
 public:
  CNodeSet() = default;
  explicit CNodeSet(std::vector<int> nodes);

  bool IsEmpty() const { return nodes_.empty(); }
  int Size() const { return static_cast<int>(nodes_.size()); }
  int At(int place) const { return nodes_[static_cast<size_t>(place)]; }
  bool Contains(int node) const;
  /// The place of a node, or the one where it would stand.
  int PlaceOf(int node) const;
  void Insert(int node);
  void Remove(int node);

  bool operator==(const CNodeSet& other) const { return nodes_ == other.nodes_; }
  std::vector<int>::const_iterator begin() const { return nodes_.begin(); }
  std::vector<int>::const_iterator end() const { return nodes_.end(); }

 private:
  std::vector<int> nodes_;
};

}  // namespace ResourceTreeKit
