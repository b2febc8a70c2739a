#include "view_group_manager.h"

#include "MarUIControl/string_conversion.h"
#include "plan_item_role.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

CViewGroupManager::CViewGroupManager() : index_code_(kTopLevelCode) {}

CViewGroupManager::~CViewGroupManager() = default;

void CViewGroupManager::OnResourceUpdate(const Param& param) {
  switch (param.event) {
    case ResourceData::RE_CHILD_ADDED:
      CViewModelDataManager::Instance().CreateObserverRootUpdate(param);
      Q_EMIT SignalRootChildAdded(param.type);
      break;
    case ResourceData::RE_CHILD_REMOVED:
      Q_EMIT SignalRootChildRemoved(MarUIControl::StringToQString(param.second), param.type);
      break;
    case ResourceData::RE_TREE_CHANGED:
      Q_EMIT SignalViewModelDataChanged();
      break;
    default:
      break;
  }
}

}  // namespace TarnPlanView
