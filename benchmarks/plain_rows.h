#pragma once

#include <QIcon>
#include <QStandardItem>

#include "LyraPluginManager/view_plugin_protocol.h"

// Rows of plain QStandardItem with the roles of the plan tree: what every figure is measured against.

QStandardItem* PlainGroupRow(const view_plugin_protocol::PlanGroup& group, const QIcon& icon);
QStandardItem* PlainPlanRow(const view_plugin_protocol::PlanBasicInfo& plan, const QIcon& icon);

view_plugin_protocol::PlanGroup BenchGroup(int number);
view_plugin_protocol::PlanBasicInfo BenchPlan(int number);
