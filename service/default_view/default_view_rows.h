#pragma once

#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

class CBothFamiliesModel;
class CStandardPlanModel;

/// The rows of the default-view chooser in their order: no default view, public plans, own plans. Each family brings a
/// placeholder of its own; only that of `public_plans` is shown. Thread: GUI.
class CDefaultViewRows : public CViewSortFilterProxyModel {
  Q_OBJECT
 public:
  CDefaultViewRows(CBothFamiliesModel* rows, const CStandardPlanModel* public_plans, QObject* parent);

  /// The row here that stands for a row of one of the families.
  QModelIndex MapFromFamily(const QModelIndex& index) const;

  bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

 private:
  CBothFamiliesModel* const rows_;
  const CStandardPlanModel* const public_;
};

}  // namespace TarnPlanView
