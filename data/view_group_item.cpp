#include "view_group_item.h"

#include "item_type.h"
#include "plan_item_role.h"
#include "plan_rules/families.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {
// The family comes from the record, not from the model that shows it.
int GroupItemType(int family) {
  switch (family) {
    case view_plugin_protocol::PublicFamily:
      return PublicGroupItem;
    case view_plugin_protocol::ReceivedFamily:
      return ReceivedGroupItem;
    default:
      return OwnGroupItem;
  }
}
}  // namespace

CViewGroupItem::CViewGroupItem(const ViewManagerParam& param, const view_plugin_protocol::PlanGroup& group)
    : param_(param), group_(group) {
  // What sorting asks for goes first: an item looks its roles up one after the other.
  setText(QString::fromStdString(group.name));
  setData(GroupItemType(group.type), ItemTypeRole);
  setIcon(CViewPublicDef::GetPlanGroupIcon(param.type == PublicTheme));
  setData(QVariant::fromValue(group), ItemRecordRole);
  setData(QString::fromStdString(group.index_code), GroupIndexCodeRole);
  setData(true, IsGroupRole);
  setData(group.type, GroupTypeRole);
  setData(true, GroupMarkRole);
  setData(!param.flag9, ItemMarkRole);
  setData(false, GroupLoadedRole);
}

CViewGroupItem::~CViewGroupItem() = default;

}  // namespace TarnPlanView
