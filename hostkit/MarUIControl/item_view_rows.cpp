#include "item_view_rows.h"

#include <QHeaderView>
#include <QListView>
#include <QScrollBar>
#include <QTreeView>
#include <climits>

namespace MarUIControl {

bool CItemViewRows::CanTell(const QAbstractItemView* view) {
  // The list of a combo box is a part of its box.
  return !view->parent() || !view->parent()->inherits("QComboBoxPrivateContainer");
}

bool CItemViewRows::IsTree() const {
  return qobject_cast<const QTreeView*>(view_) != nullptr;
}

int CItemViewRows::Columns() const {
  return view_->model() && IsTree() ? view_->model()->columnCount(view_->rootIndex()) : 1;
}

bool CItemViewRows::IsUniform() const {
  const auto* tree = qobject_cast<const QTreeView*>(view_);
  return !tree || tree->uniformRowHeights();
}

// Only where rows differ in height, as they do in short lists alone.
std::pair<int, QModelIndex> CItemViewRows::Walk(const std::function<bool(int, const QModelIndex&)>& is_it) const {
  const auto* tree = static_cast<const QTreeView*>(view_);
  int number = 0;
  for (QModelIndex row = tree->model()->index(0, 0, tree->rootIndex()); row.isValid(); row = tree->indexBelow(row)) {
    if (is_it(number, row)) {
      return {number, row};
    }
    ++number;
  }
  return {number, QModelIndex()};
}

// The view itself knows them by number, but says so for places only.
CItemViewRows::Spread CItemViewRows::SpreadOf(const QTreeView& tree) const {
  const int column = tree.header()->logicalIndex(0);
  const QModelIndex in_sight = tree.indexAt({tree.header()->sectionViewportPosition(column), 0});
  if (!in_sight.isValid()) {
    return {};
  }
  const int height = tree.visualRect(in_sight).height(), scrolled = tree.verticalScrollBar()->value();
  const bool by_rows = tree.verticalScrollMode() == QAbstractItemView::ScrollPerItem;
  return {by_rows ? -scrolled * height : -scrolled, height};
}

// Asked for by halves: the number of rows is known to the view alone, and there may be a hundred thousand.
int CItemViewRows::Count() const {
  if (!view_->model()) {
    return 0;
  }
  if (!IsTree()) {
    return view_->model()->rowCount(view_->rootIndex());
  }
  if (!IsUniform()) {
    return Walk([](int, const QModelIndex&) { return false; }).first;
  }
  int there = -1, beyond = 1;
  while (At(beyond - 1, 0).isValid()) {
    there = beyond - 1;
    beyond *= 2;
  }
  while (beyond - there > 1) {
    const int middle = there + (beyond - there) / 2;
    int& end = At(middle, 0).isValid() ? there : beyond;
    end = middle;
  }
  return there + 1;
}

QModelIndex CItemViewRows::At(int row, int column) const {
  if (!view_->model() || row < 0) {
    return QModelIndex();
  }
  const auto* tree = qobject_cast<const QTreeView*>(view_);
  if (!tree) {
    return view_->model()->index(row, column, view_->rootIndex());
  }
  if (!IsUniform()) {
    const QModelIndex found = Walk([row](int number, const QModelIndex&) { return number == row; }).second;
    return found.isValid() ? found.sibling(found.row(), column) : found;
  }
  const Spread spread = SpreadOf(*tree);
  const int first = tree->header()->logicalIndex(0);
  const int x = tree->header()->sectionViewportPosition(first);
  const qint64 middle = spread.top + static_cast<qint64>(row) * spread.height + spread.height / 2;
  if (spread.height <= 0 || middle > INT_MAX) {
    return QModelIndex();
  }
  const QModelIndex index = tree->indexAt({x, static_cast<int>(middle)});
  return index.isValid() ? index.sibling(index.row(), column) : index;
}

int CItemViewRows::RowOf(const QModelIndex& index) const {
  const auto* tree = qobject_cast<const QTreeView*>(view_);
  if (!tree) {
    return index.isValid() ? index.row() : -1;
  }
  if (!IsUniform()) {
    const QModelIndex wanted = index.sibling(index.row(), 0);
    const auto found = Walk([&wanted](int, const QModelIndex& row) { return row == wanted; });
    return found.second.isValid() ? found.first : -1;
  }
  const QRect place = tree->visualRect(index.sibling(index.row(), tree->header()->logicalIndex(0)));
  const Spread spread = SpreadOf(*tree);
  return place.isValid() && spread.height > 0 ? (place.top() - spread.top) / spread.height : -1;
}

int CItemViewRows::LevelOf(const QModelIndex& index) const {
  int level = 1;
  for (QModelIndex above = index.parent(); above != view_->rootIndex() && above.isValid(); above = above.parent()) {
    ++level;
  }
  return level;
}

}  // namespace MarUIControl
