#pragma once

#include <QSortFilterProxyModel>
#include <memory>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Handle on one sorting and filtering proxy of a plan tree. The proxy to show is GetQSortFilterModel(), not the
/// handle itself. Thread: GUI.
class TARNPLANVIEW_EXPORT CViewSortFilterProxyModelExport : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  /// `flag`: whether filtering is on from the start.
  CViewSortFilterProxyModelExport(QObject* parent, bool flag);
  ~CViewSortFilterProxyModelExport() override;

  void SetQSortFilterModel(QAbstractItemModel* model);
  /// Owned by this handle.
  QSortFilterProxyModel* GetQSortFilterModel();
  /// The flags take effect at the proxy's next filter pass.
  void SetFilterEnabled(bool enabled);
  void SetAddOrEdit(bool add);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
