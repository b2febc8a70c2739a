#include "view.h"

#include <utility>

#include "MarUIControl/string_conversion.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

CView::CView(std::string index_code) : index_code_(std::move(index_code)) {}

CView::~CView() = default;

void CView::OnResourceUpdate(const Param& param) {
  CViewModelDataManager::Instance().Follow(*this);
  Q_EMIT SignalViewChanged(MarUIControl::StringToQString(param.index_code));
}

}  // namespace TarnPlanView
