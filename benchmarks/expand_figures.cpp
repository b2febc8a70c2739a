#include <QCoreApplication>
#include <QStandardItemModel>
#include <algorithm>

#include "bench_site.h"
#include "figures.h"
#include "host_fixture.h"
#include "plain_rows.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kPlans = 10000;
constexpr int kPublicModels = 4;
constexpr int kRounds = 7;

double PlainMs() {
  QStandardItemModel models[kPublicModels];
  const QIcon icon = CViewPublicDef::GetPlanIcon(true, false);
  for (QStandardItemModel& model : models) {
    model.appendRow(PlainGroupRow(BenchGroup(1), icon));
  }
  return TimeMs([&models, &icon] {
    for (QStandardItemModel& model : models) {
      QList<QStandardItem*> rows;
      for (int plan = 0; plan < kPlans; ++plan) {
        rows.append(PlainPlanRow(BenchPlan(plan), icon));
      }
      model.item(0)->appendRows(rows);
    }
  });
}

/// Runs the event loop until the rows are there and notes how long it was held at most.
double RunUntilExpanded(const CStandardPlanModel& model, const QModelIndex& group) {
  double longest = 0;
  const QPersistentModelIndex row(group);
  while (model.rowCount(row) != kPlans) {
    longest = std::max(longest, TimeMs([] { QCoreApplication::processEvents(); }));
  }
  return longest;
}

struct Expansion {
  double ms = 0;
  double longest_hold = 0;
};

Expansion Expand(HostFixture& host) {
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  manager.LoadAllViewManagerModelData();
  auto* model = manager.GetViewManagerByTheme(QStringLiteral("0"), PublicTheme);
  CStandardViewController controller(model);
  controller.setParent(nullptr);
  controller.OnExpandViewTreeItem(model->index(0, 0));
  HostFixture::WaitFor([model] { return model->rowCount(model->index(0, 0)) == 1; });
  Expansion result;
  result.ms = TimeMs([&] {
    const QModelIndex group = model->index(0, 0, model->index(0, 0));
    const double call = TimeMs([&] { controller.OnExpandViewTreeItem(group); });
    result.longest_hold = std::max(call, RunUntilExpanded(*model, group));
  });
  return result;
}

}  // namespace

Figures MeasureExpand() {
  HostFixture host(MakeBenchSite(1, kPlans), {{QStringLiteral("load_all"), 0}});
  double longest = 0;
  const Sides sides = MeasureByTurns(
      kRounds,
      [&] {
        const Expansion expansion = Expand(host);
        longest = std::max(longest, expansion.longest_hold);
        return expansion.ms;
      },
      PlainMs);
  return {{QStringLiteral("expand_10000"),
           QStringLiteral("expanding a group of 10,000 plans, controller to rows in four models, against plain rows"),
           sides.Ratio(), 3.0, Figure::AtMost,
           sides.Note() + QStringLiteral("; GUI thread held for at most %1 ms").arg(longest, 0, 'f', 1)}};
}
