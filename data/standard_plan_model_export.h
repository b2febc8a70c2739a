#pragma once

#include <memory>

#include "MarUIControl/standard_item_model.h"
#include "tarn_plan_view_export.h"
#include "view_manager_param.h"

namespace TarnPlanView {

/// Handle on one plan tree model. The handle is itself an item model that stays empty; the rows are in
/// GetPlanViewModel(). Thread: GUI.
class TARNPLANVIEW_EXPORT CStandardPlanModelExport : public MarUIControl::CStandardItemModel {
  Q_OBJECT
 public:
  /// Finds the model by the parameter's monitor id and theme; makes none.
  CStandardPlanModelExport(std::shared_ptr<CViewManagerParam>& param, QObject* parent);
  ~CStandardPlanModelExport() override;

  /// CStandardPlanModel::SetViewGroupSeleted() of the model; nothing without one.
  void SetViewGroupSeleted(bool selected);
  /// The model, a CStandardPlanModel owned by the plug-in; null when there is none, or none any more.
  MarUIControl::CStandardItemModel* GetPlanViewModel();

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
