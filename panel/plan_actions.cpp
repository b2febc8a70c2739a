#include "plan_actions.h"

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "view_config_manager.h"

namespace TarnPlanView {

bool HasRight(int code) {
  return LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(code);
}

PlanActions AllowedActions(const QModelIndex& index) {
  const bool may_add = HasRight(kAddRight);
  const bool may_edit = HasRight(kEditRight);
  const bool may_delete = HasRight(kDeleteRight);
  const bool under_root = CViewConfigManager::Instance().CreatePlanUnderRootNode();
  switch (index.data(ItemTypeRole).toInt()) {
    case PublicRootItem:
      return {may_add, may_add && under_root, false, false};
    case OwnRootItem:
      return {true, under_root, false, false};
    case PublicGroupItem:
    case PublicPlanItem:
    case PublicLeafItem:
      return {may_add, may_add, may_edit, may_delete};
    case OwnGroupItem:
    case OwnPlanItem:
    case OwnLeafItem:
      return {true, true, true, true};
    case ReceivedRootItem:
    case ReceivedGroupItem:
    case ReceivedPlanItem:
    case ReceivedLeafItem:
      return {true, false, std::nullopt, std::nullopt};
    default:
      return {};
  }
}

}  // namespace TarnPlanView
