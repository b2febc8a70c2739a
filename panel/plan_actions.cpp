#include "plan_actions.h"

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "view_config_manager.h"

namespace TarnPlanView {

namespace {

bool HasRight(int code) {
  return LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(code);
}

}  // namespace

bool PlanRights::Has(int code) const {
  switch (code) {
    case kAddRight:
      return add;
    case kEditRight:
      return edit;
    default:
      return remove;
  }
}

PlanRights AskRights() {
  return {HasRight(kAddRight), HasRight(kEditRight), HasRight(kDeleteRight)};
}

bool MaySharePlans(const PlanRights& rights) {
  return rights.add;
}

PlanActions AllowedActions(const QModelIndex& index, const PlanRights& rights) {
  const bool under_root = CViewConfigManager::Instance().CreatePlanUnderRootNode();
  switch (index.data(ItemTypeRole).toInt()) {
    case PublicRootItem:
      return {rights.add, rights.add && under_root, false, false};
    case OwnRootItem:
      return {true, under_root, false, false};
    case PublicGroupItem:
    case PublicPlanItem:
    case PublicLeafItem:
      return {rights.add, rights.add, rights.edit, rights.remove};
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
