#pragma once

#include <QModelIndex>

#include "item_type.h"
#include "plan_item_role.h"
#include "plan_view_tree.h"

// Which rows a drop can be about. Thread: GUI.
namespace TarnPlanView {

/// A public group or one of the user's own; no root.
inline bool IsGroupRow(const QModelIndex& row) {
  const int type = row.data(ItemTypeRole).toInt();
  return type == PublicGroupItem || type == OwnGroupItem;
}

/// Levels as CPlanViewTree::GetItemLevel() has them.
inline bool IsPlanOverItsGroup(int plan_level, int group_level) {
  return (plan_level == PublicPlanLevel && group_level == PublicGroupLevel) ||
         (plan_level == OwnPlanLevel && group_level == OwnGroupLevel);
}

}  // namespace TarnPlanView
