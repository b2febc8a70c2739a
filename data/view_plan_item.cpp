#include "view_plan_item.h"

#include "item_type.h"
#include "plan_item_role.h"
#include "plan_rules/families.h"
#include "plan_rules/plan_sign.h"
#include "view_config_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {
// The family comes from the record, not from the model that shows it.
int PlanItemType(int family) {
  switch (family) {
    case view_plugin_protocol::PublicFamily:
      return PublicPlanItem;
    case view_plugin_protocol::ReceivedFamily:
      return ReceivedPlanItem;
    default:
      return OwnPlanItem;
  }
}
}  // namespace

CViewPlanItem::CViewPlanItem(const ViewManagerParam& param, const view_plugin_protocol::PlanBasicInfo& plan)
    : param_(param), plan_(plan) {
  // What sorting asks for goes first: an item looks its roles up one after the other.
  setData(QString::fromStdString(plan.name), Qt::DisplayRole);
  setData(PlanItemType(plan.type), ItemTypeRole);
  setIcon(CViewPublicDef::GetPlanIcon(param.type == PublicTheme, false));
  setData(QVariant::fromValue(plan), ItemRecordRole);
  setData(QString::fromStdString(plan.index_code), PlanIndexCodeRole);
  setData(false, IsGroupRole);
  setData(plan.type, PlanTypeRole);
  setData(false, PlayingRole);
}

CViewPlanItem::~CViewPlanItem() = default;

QVariant CViewPlanItem::data(int role) const {
  if (role == Qt::AccessibleTextRole && data(PlayingRole).toBool()) {
    return tr("%1, playing").arg(text());
  }
  if (role == Qt::AccessibleDescriptionRole) {
    return view_plugin_protocol::TextOf(SignOf(plan_, CViewConfigManager::Instance().IsSupportTimedPlay()));
  }
  return CStandardItem::data(role);
}

void CViewPlanItem::SetPlayState(bool playing) {
  setIcon(CViewPublicDef::GetPlanIcon(param_.type == PublicTheme, playing));
  setData(playing, PlayingRole);
}

}  // namespace TarnPlanView
