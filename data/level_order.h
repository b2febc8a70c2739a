#pragma once

#include <QModelIndex>
#include <QStandardItemModel>
#include <deque>
#include <utility>
#include <vector>

#include "level_places.h"
#include "ordered_row.h"

namespace TarnPlanView {

/// The order of a plan tree's rows of one level.
///
/// A long sort asks for each row some twenty times: what its rows are compared by is read once then, into one block.
/// When all rows are sorted, they get their places in that block at once, and trees that sort rows of the same records
/// find them. All is to be forgotten with every change of the tree. Thread: GUI.
class CLevelOrder {
 public:
  explicit CLevelOrder(const QStandardItemModel* tree) : tree_(tree) {}

  /// Whether IsBefore() may be asked of the index, if it is valid.
  bool IsOfTree(const QModelIndex& index) const { return index.model() == tree_; }
  /// Both of the tree, and valid.
  bool IsBefore(const QModelIndex& left, const QModelIndex& right) {
    return HasPlaces(left, right) ? IsPlacedBefore(left, right) : isBeforeWithoutPlaces(left, right);
  }
  /// Whether both have places by now; those that have are of the tree, and valid.
  bool HasPlaces(const QModelIndex& left, const QModelIndex& right) const {
    return places_ && isOfLevel(left) && isOfLevel(right);
  }
  bool IsPlacedBefore(const QModelIndex& left, const QModelIndex& right) const {
    return places_->OfRow(left.row()) < places_->OfRow(right.row());
  }
  void Forget();
  /// Whether a level was read, which takes memory until it is forgotten.
  bool HoldsLevel() const { return !rows_.empty() || places_; }

 private:
  using OwnName = std::pair<QString, MarUIControl::CollationKey>;
  using OwnNames = std::deque<OwnName>;  // those that are no record's

  static OrderedRow OrderedRowOf(const QStandardItem* row, OwnNames& own_names);
  bool isOfLevel(const QModelIndex& index) const { return index.internalPointer() == level_ && index.column() == 0; }
  bool isBeforeWithoutPlaces(const QModelIndex& left, const QModelIndex& right);
  bool isBeforeInLevel(int left, int right);
  void readLevel();
  void placeRows();

  const QStandardItemModel* tree_;
  const QStandardItem* level_ = nullptr;
  size_t comparisons_ = 0;
  std::vector<OrderedRow> rows_;
  OwnNames own_names_;
  bool can_be_placed_ = false;  // all rows are ordered by their records
  CLevelPlaces::Ptr places_;
};

}  // namespace TarnPlanView
