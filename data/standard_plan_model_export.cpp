#include "standard_plan_model_export.h"

#include <QPointer>

#include "standard_plan_model.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

class CStandardPlanModelExport::Private {
 public:
  QPointer<CStandardPlanModel> model;  // a handle may outlive the manager that owns the model
};

CStandardPlanModelExport::CStandardPlanModelExport(std::shared_ptr<CViewManagerParam>& param, QObject* parent)
    : MarUIControl::CStandardItemModel(nullptr), d_(std::make_unique<Private>()) {
  setParent(parent);
  const std::shared_ptr<ViewManagerParam> body = param ? param->GetDataPtr() : nullptr;
  if (body) {
    d_->model = CViewModelDataManager::Instance().GetViewManagerByTheme(body->name, body->type);
  }
}

CStandardPlanModelExport::~CStandardPlanModelExport() = default;

void CStandardPlanModelExport::SetViewGroupSeleted(bool selected) {
  if (d_->model) {
    d_->model->SetViewGroupSeleted(selected);
  }
}

MarUIControl::CStandardItemModel* CStandardPlanModelExport::GetPlanViewModel() {
  return d_->model;
}

}  // namespace TarnPlanView
