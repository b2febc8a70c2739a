#include "default_view_rows.h"

#include "both_families_model.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

CDefaultViewRows::CDefaultViewRows(CBothFamiliesModel* rows, const CStandardPlanModel* public_plans, QObject* parent)
    : CViewSortFilterProxyModel(parent, false), rows_(rows), public_(public_plans) {
  setSourceModel(rows);
}

QModelIndex CDefaultViewRows::MapFromFamily(const QModelIndex& index) const {
  return mapFromSource(rows_->MapFromSource(index));
}

bool CDefaultViewRows::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const {
  if (source_parent.isValid()) {
    return true;
  }
  const QModelIndex row = rows_->index(source_row, 0);
  return row.data(ItemTypeRole).toInt() != PlaceholderItem || rows_->MapToSource(row).model() == public_;
}

}  // namespace TarnPlanView
