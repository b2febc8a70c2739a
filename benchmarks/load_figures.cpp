#include <malloc.h>
#include <sys/resource.h>

#include <QStandardItemModel>
#include <algorithm>
#include <limits>

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
constexpr int kGrowth = 10;

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

void CheckFilled(const QString& monitor, int groups) {
  const auto& manager = CViewModelDataManager::Instance();
  const auto* model = manager.GetViewManagerByTheme(monitor, PublicTheme);
  const QModelIndex root = model->index(0, 0);
  if (!manager.IsViewModelInitFinish() || model->rowCount(root) != groups ||
      model->rowCount(model->index(groups - 1, 0, root)) != kPlansEach) {
    qFatal("the load did not fill the models");
  }
}

double OurMs(HostFixture& host) {
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  const double ms = TimeMs([&manager] { manager.LoadAllViewManagerModelData(); });
  CheckFilled(QStringLiteral("3"), kGroups);
  return ms;
}

void LeaveOneModel() {
  auto& manager = CViewModelDataManager::Instance();
  for (const char* monitor : {"1", "2", "3", "system_config"}) {
    for (const ThemeNodeType theme : {PublicTheme, OwnTheme}) {
      manager.RemViewManagerModel(manager.GetViewManagerByTheme(QString::fromLatin1(monitor), theme));
    }
  }
  manager.RemViewManagerModel(manager.GetViewManagerByTheme(QStringLiteral("0"), OwnTheme));
}

struct OneLoad {
  double ms = std::numeric_limits<double>::max();
  long faults = 0;  // pages that the system gave meanwhile
};

long PageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

/// The shortest of a few full loads into one model. Each begins, as that of a client does, without memory to use again:
/// else a second small load would find all that the first has let go, and a large one after it would have to ask the
/// system for nearly every page.
OneLoad LoadOneModel(int groups, int rounds) {
  HostFixture host(MakeBenchSite(groups, kPlansEach), {{QStringLiteral("load_all"), 1}});
  OneLoad best;
  for (int round = 0; round < rounds; ++round) {
    host.RestartPlugin();
    LeaveOneModel();
    auto& manager = CViewModelDataManager::Instance();
    malloc_trim(0);
    const long before = PageFaults();
    const double ms = TimeMs([&manager] { manager.LoadAllViewManagerModelData(); });
    if (ms < best.ms) {
      best = {ms, PageFaults() - before};
    }
    CheckFilled(QStringLiteral("0"), groups);
  }
  return best;
}

}  // namespace

Figures MeasureGrowth() {
  const OneLoad small = LoadOneModel(kGroups, kRounds);
  const OneLoad large = LoadOneModel(kGrowth * kGroups, kRounds);
  return {{QStringLiteral("growth"),
           QStringLiteral("full load of 1,100,000 records into one model against ten times that of 110,000"),
           large.ms / (kGrowth * small.ms), 1.3, Figure::AtMost,
           QStringLiteral("%1 ms with %2 page faults, and %3 ms with %4")
               .arg(large.ms, 0, 'f', 0)
               .arg(large.faults)
               .arg(small.ms, 0, 'f', 0)
               .arg(small.faults)}};
}

Figures MeasureFullLoad() {
  HostFixture host(MakeBenchSite(kGroups, kPlansEach), {{QStringLiteral("load_all"), 1}});
  const Sides sides = MeasureByTurns(
      kRounds, [&host] { return OurMs(host); }, PlainMs);
  return {{QStringLiteral("full_load"),
           QStringLiteral("full load of 10,000 groups and 100,000 plans against plain rows in four models"),
           sides.Ratio(), 1.0, Figure::AtMost, sides.Note()}};
}
