#include "row_move_check.h"

#include <QAbstractProxyModel>
#include <cstdlib>

#include "plan_view_tree.h"

namespace TarnPlanView {

namespace {

QModelIndex ToModel(const CPlanViewTree& tree, const QModelIndex& index) {
  const auto* proxy = qobject_cast<const QAbstractProxyModel*>(tree.model());
  if (!proxy) {
    return index;
  }
  return proxy->mapToSource(index);
}

// The row that the drop goes before; invalid after the last one.
QModelIndex DropRow(const QModelIndex& target, const QPoint& end, const QRect& target_rect) {
  const int middle = (target_rect.top() + target_rect.bottom()) / 2;
  if (middle >= end.y()) {
    return target;
  }
  return target.sibling(target.row() + 1, target.column());
}

}  // namespace

RowMoveRefusal CheckRowMove(const CPlanViewTree& tree, const QPoint& start, const QPoint& end,
                            const QRect& target_rect) {
  const QModelIndex source_row = tree.indexAt(start);
  const QModelIndex target_row = tree.indexAt(end);
  const EItemLevel source_level = tree.GetItemLevel(source_row);
  const EItemLevel target_level = tree.GetItemLevel(target_row);
  const QModelIndex source = ToModel(tree, source_row);
  const QModelIndex drop = ToModel(tree, DropRow(target_row, end, target_rect));
  if (!source.isValid() || !target_row.isValid() || drop == source) {
    return RowMoveRefusal::None;
  }
  const bool same_parent = source_row.parent() == target_row.parent();
  const bool plan = IsPlanLevel(source_level);
  if (source_level == target_level) {
    // Groups keep their order by name without a word; taking one into another group is refused aloud.
    if (!same_parent) {
      return RowMoveRefusal::OtherGroup;
    }
    return plan ? RowMoveRefusal::SameGroup : RowMoveRefusal::None;
  }
  if (plan && std::abs(source_level - target_level) == 1) {
    return RowMoveRefusal::OtherGroup;
  }
  return RowMoveRefusal::None;
}

}  // namespace TarnPlanView
