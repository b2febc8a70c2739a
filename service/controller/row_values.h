#pragma once

#include <QModelIndex>
#include <QString>

#include "plan_item_role.h"

namespace TarnPlanView {

/// One of ItemType.
inline int TypeOf(const QModelIndex& index) {
  return index.data(ItemTypeRole).toInt();
}

/// Empty for a plan.
inline QString GroupCodeOf(const QModelIndex& index) {
  return index.data(GroupIndexCodeRole).toString();
}

}  // namespace TarnPlanView
