#include <QStandardItemModel>

#include "bench_site.h"
#include "figures.h"
#include "host_fixture.h"
#include "plain_rows.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kGroups = 10000;
constexpr int kPlansEach = 10;
constexpr int kPublicModels = 4;
constexpr int kRounds = 3;

void BuildPlainTree(QStandardItemModel& model) {
  const QIcon group_icon = CViewPublicDef::GetPlanGroupIcon(true);
  const QIcon plan_icon = CViewPublicDef::GetPlanIcon(true, false);
  QStandardItem* root = PlainGroupRow(BenchGroup(0), group_icon);
  model.appendRow(root);
  QList<QStandardItem*> groups;
  for (int group = 0; group < kGroups; ++group) {
    groups.append(PlainGroupRow(BenchGroup(group + 1), group_icon));
  }
  root->appendRows(groups);
  for (int group = 0; group < kGroups; ++group) {
    QList<QStandardItem*> plans;
    for (int plan = 0; plan < kPlansEach; ++plan) {
      plans.append(PlainPlanRow(BenchPlan(group * kPlansEach + plan), plan_icon));
    }
    groups[group]->appendRows(plans);
  }
}

double PlainMs() {
  QStandardItemModel models[kPublicModels];
  return TimeMs([&models] {
    for (QStandardItemModel& model : models) {
      BuildPlainTree(model);
    }
  });
}

double OurMs(HostFixture& host) {
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  const double ms = TimeMs([&manager] { manager.LoadAllViewManagerModelData(); });
  const auto* model = manager.GetViewManagerByTheme(QStringLiteral("3"), PublicTheme);
  const QModelIndex root = model->index(0, 0);
  if (!manager.IsViewModelInitFinish() || model->rowCount(root) != kGroups ||
      model->rowCount(model->index(kGroups - 1, 0, root)) != kPlansEach) {
    qFatal("the load did not fill the models");
  }
  return ms;
}

}  // namespace

Figures MeasureFullLoad() {
  HostFixture host(MakeBenchSite(kGroups, kPlansEach), {{QStringLiteral("load_all"), 1}});
  const Sides sides = MeasureByTurns(
      kRounds, [&host] { return OurMs(host); }, PlainMs);
  return {{QStringLiteral("full_load"),
           QStringLiteral("full load of 10,000 groups and 100,000 plans against plain rows in four models"),
           sides.Ratio(), 3.0, Figure::AtMost, sides.Note()}};
}
