#include "plain_rows.h"

#include "plan_item_role.h"

using namespace TarnPlanView;

QStandardItem* PlainGroupRow(const view_plugin_protocol::PlanGroup& group, const QIcon& icon) {
  auto* item = new QStandardItem;
  item->setText(QString::fromStdString(group.name));
  item->setIcon(icon);
  item->setData(QVariant::fromValue(group), ItemRecordRole);
  item->setData(QString::fromStdString(group.index_code), GroupIndexCodeRole);
  item->setData(2, ItemTypeRole);
  item->setData(true, IsGroupRole);
  item->setData(group.type, GroupTypeRole);
  item->setData(true, GroupMarkRole);
  item->setData(true, ItemMarkRole);
  item->setData(false, GroupLoadedRole);
  return item;
}

QStandardItem* PlainPlanRow(const view_plugin_protocol::PlanBasicInfo& plan, const QIcon& icon) {
  auto* item = new QStandardItem;
  item->setText(QString::fromStdString(plan.name));
  item->setIcon(icon);
  item->setData(QVariant::fromValue(plan), ItemRecordRole);
  item->setData(QString::fromStdString(plan.index_code), PlanIndexCodeRole);
  item->setData(3, ItemTypeRole);
  item->setData(false, IsGroupRole);
  item->setData(plan.type, PlanTypeRole);
  item->setData(false, PlayingRole);
  return item;
}

view_plugin_protocol::PlanGroup BenchGroup(int number) {
  view_plugin_protocol::PlanGroup group;
  group.name = "Sector " + std::to_string(number);
  group.index_code = std::to_string(number);
  group.parent_index_code = "-1";
  return group;
}

view_plugin_protocol::PlanBasicInfo BenchPlan(int number) {
  view_plugin_protocol::PlanBasicInfo plan;
  plan.name = "Plan " + std::to_string(number);
  plan.index_code = std::to_string(1000000 + number);
  plan.group_index_code = "1";
  return plan;
}
