#pragma once

#include <QModelIndex>

#include "plan_item_role.h"
#include "view_public_def.h"

// What a row of a plan tree is. Here and not among the plan rules, for it is read from the rows' roles. Thread: GUI.
namespace TarnPlanView {

/// Whether the row is a plan or a plan-like leaf; a root, a group or the placeholder is none.
inline bool IsPlanRow(const QModelIndex& index) {
  return CViewPublicDef::GetIndexItemType(index) == 1;
}

/// An ItemType; 0 where there is none.
inline int TypeOf(const QModelIndex& index) {
  return index.data(ItemTypeRole).toInt();
}

/// What the host knows a group by, which of roots is not their index code; empty for a plan.
inline QString GroupCodeOf(const QModelIndex& index) {
  return index.data(GroupIndexCodeRole).toString();
}

/// The row's own code, a group's or a plan's; that of a root is its number.
inline QString CodeOfRow(const QModelIndex& index) {
  return index.data(index.data(IsGroupRole).toBool() ? GroupIndexCodeRole : PlanIndexCodeRole).toString();
}

}  // namespace TarnPlanView
