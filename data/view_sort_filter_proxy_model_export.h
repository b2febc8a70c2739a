#pragma once

#include <QSortFilterProxyModel>
#include <memory>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Handle on one sorting and filtering proxy of a plan tree. The proxy to show is GetQSortFilterModel(), not the
/// handle itself. Groups stand before plans, each ordered by name as people do it. Thread: GUI.
class TARNPLANVIEW_EXPORT CViewSortFilterProxyModelExport : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  /// `flag`: whether filtering is on from the start.
  CViewSortFilterProxyModelExport(QObject* parent, bool flag);
  ~CViewSortFilterProxyModelExport() override;

  /// The rows to order, a CStandardPlanModel as a rule; not owned, null for none.
  void SetQSortFilterModel(QAbstractItemModel* model);
  /// The proxy; owned by this handle.
  QSortFilterProxyModel* GetQSortFilterModel();
  /// With filtering on only roots and groups are shown that a plan may go into: those of the public tree only to a user
  /// with the right to add or edit. Takes effect at the proxy's next filter pass.
  void SetFilterEnabled(bool enabled);
  /// Which right filtering goes by: to add (true), or to edit, which it is at first. Takes effect at the next filter
  /// pass.
  void SetAddOrEdit(bool add);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
