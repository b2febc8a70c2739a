#pragma once

#include <QModelIndex>
#include <QRect>
#include <functional>
#include <utility>

class QAbstractItemView;
class QTreeView;

namespace MarUIControl {

/// The rows of a list or tree as they stand below each other: number to row and back, without a walk over them where
/// they are of one height. Thread: GUI.
class CItemViewRows {
 public:
  explicit CItemViewRows(QAbstractItemView* view) : view_(view) {}

  /// False for what is a part of another control.
  static bool CanTell(const QAbstractItemView* view);

  bool IsTree() const;
  int Count() const;
  int Columns() const;
  QModelIndex At(int row, int column) const;
  /// -1 when it is not in the view, as below a closed row.
  int RowOf(const QModelIndex& index) const;
  /// Of a row of a tree: 1 at the top.
  int LevelOf(const QModelIndex& index) const;

 private:
  struct Spread {
    int top = 0, height = 0;  // of the first row, in the viewport
  };
  bool IsUniform() const;
  /// The first row that is it, with its number; without one how many there are.
  std::pair<int, QModelIndex> Walk(const std::function<bool(int, const QModelIndex&)>& is_it) const;
  Spread SpreadOf(const QTreeView& tree) const;

  QAbstractItemView* const view_;
};

}  // namespace MarUIControl
