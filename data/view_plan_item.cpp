#include "view_plan_item.h"

#include <utility>

#include "plan_item_role.h"
#include "plan_rules/plan_sign.h"
#include "view_config_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

CViewPlanItem::CViewPlanItem(const ViewManagerParam& param, const view_plugin_protocol::PlanBasicInfo& plan)
    : CViewPlanItem(param, CRowRecord::Of(plan)) {}

CViewPlanItem::CViewPlanItem(const ViewManagerParam& param, CRowRecord::Ptr plan)
    : CRecordItem(std::move(plan), param) {}

CViewPlanItem::~CViewPlanItem() = default;

QVariant CViewPlanItem::data(int role) const {
  if (role == Qt::AccessibleTextRole && data(PlayingRole).toBool()) {
    return tr("%1, playing").arg(text());
  }
  if (role == Qt::AccessibleDescriptionRole) {
    const auto plan = data(CurrentRecordRole).value<view_plugin_protocol::PlanBasicInfo>();
    return view_plugin_protocol::TextOf(SignOf(plan, CViewConfigManager::Instance().IsSupportTimedPlay()));
  }
  const QVariant value = CRecordItem::data(role);
  if (role == CurrentRecordRole && !value.isValid()) {
    return Record().Host();
  }
  return value;
}

void CViewPlanItem::SetPlayState(bool playing) {
  setIcon(CViewPublicDef::GetPlanIcon(IsDark(), playing));
  setData(playing, PlayingRole);
}

}  // namespace TarnPlanView
