#pragma once

#include <QAbstractItemModel>

class QStandardItem;

namespace TarnPlanView {

/// The level of a model that was asked for a row last. A sort of 10,000 rows asks for one some 250,000 times, and finds
/// the level's parent without a search. Belongs to the model. Thread: GUI.
class CRecentLevel {
 public:
  /// Whether the level below `parent` is the one, and has that row.
  bool Has(int row, const QModelIndex& parent) const { return row >= 0 && row < row_count_ && parent == parent_; }
  /// The item whose children the level is.
  QStandardItem* Parent() const { return item_; }

  void Note(const QModelIndex& parent, QStandardItem* item, int row_count) {
    parent_ = parent;
    item_ = item;
    row_count_ = row_count;
  }
  /// From here on, for as long as the model lives. Who connects to it later hears of a change afterwards.
  void ForgetWithChangesOf(const QAbstractItemModel* model);

 private:
  void forget() { row_count_ = 0; }

  int row_count_ = 0;  // none is known
  QModelIndex parent_;
  QStandardItem* item_ = nullptr;
};

}  // namespace TarnPlanView
