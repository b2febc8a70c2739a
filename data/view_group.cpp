#include "view_group.h"

#include <utility>

#include "MarUIControl/string_conversion.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

CViewGroup::CViewGroup(std::string index_code) : index_code_(std::move(index_code)) {}

CViewGroup::~CViewGroup() = default;

void CViewGroup::OnResourceUpdate(const Param& param) {
  CViewModelDataManager::Instance().Follow(*this);
  const QString code = MarUIControl::StringToQString(param.index_code);
  const QString second = MarUIControl::StringToQString(param.second);
  switch (param.event) {
    case ResourceData::RE_NAME_CHANGED:
      Q_EMIT SignalViewGroupNameChanged(code, second);
      break;
    case ResourceData::RE_CHILD_ADDED:
      CViewModelDataManager::Instance().CreateObserverUpdateResource(param);
      Q_EMIT SignalViewGroupChildAdded(code, param.type);
      break;
    case ResourceData::RE_CHILD_REMOVED:
      Q_EMIT SignalViewGroupChildRemoved(second, param.type);
      break;
    default:
      break;
  }
}

}  // namespace TarnPlanView
