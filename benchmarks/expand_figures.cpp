#include <QCoreApplication>
#include <QStandardItemModel>
#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "bench_site.h"
#include "figures.h"
#include "host_fixture.h"
#include "plain_rows.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model.h"

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
    longest = std::max(longest, HeldMs([] { QCoreApplication::processEvents(); }));
  }
  return longest;
}

struct Expansion {
  double ms = 0;
  double longest_hold = 0;
};

/// Sorted trees over the public models, as four panels have them.
class SortedTrees {
 public:
  SortedTrees() {
    for (int monitor = 0; monitor < kPublicModels; ++monitor) {
      auto proxy = std::make_unique<CViewSortFilterProxyModel>(nullptr, false);
      proxy->setSourceModel(
          CViewModelDataManager::Instance().GetViewManagerByTheme(QString::number(monitor), PublicTheme));
      proxies_.push_back(std::move(proxy));
    }
  }
  /// What a view does that shows the rows of the root.
  void ShowRootsRows() {
    for (const auto& proxy : proxies_) {
      proxy->rowCount(proxy->index(0, 0));
    }
  }
  void CheckSorted() const {
    for (const auto& proxy : proxies_) {
      const QModelIndex group = proxy->index(0, 0, proxy->index(0, 0));
      if (proxy->rowCount(group) != kPlans || proxy->index(1, 0, group).data() != QStringLiteral("Plan 1-2")) {
        qFatal("a tree did not get its rows");
      }
    }
  }

 private:
  std::vector<std::unique_ptr<CViewSortFilterProxyModel>> proxies_;
};

Expansion Expand(HostFixture& host, bool with_trees) {
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  manager.LoadAllViewManagerModelData();
  auto* model = manager.GetViewManagerByTheme(QStringLiteral("0"), PublicTheme);
  CStandardViewController controller(model);
  controller.setParent(nullptr);
  controller.OnExpandViewTreeItem(model->index(0, 0));
  std::optional<SortedTrees> trees;
  if (with_trees) {
    trees.emplace();
  }
  HostFixture::WaitFor([model] { return model->rowCount(model->index(0, 0)) == 1; });
  if (trees) {
    trees->ShowRootsRows();
  }
  Expansion result;
  result.ms = TimeMs([&] {
    const QModelIndex group = model->index(0, 0, model->index(0, 0));
    const double call = HeldMs([&] { controller.OnExpandViewTreeItem(group); });
    result.longest_hold = std::max(call, RunUntilExpanded(*model, group));
  });
  if (trees) {
    trees->CheckSorted();
  }
  return result;
}

}  // namespace

Figures MeasureExpand() {
  HostFixture host(MakeBenchSite(1, kPlans), {{QStringLiteral("load_all"), 0}});
  const Sides sides = MeasureByTurns(
      kRounds, [&] { return Expand(host, false).ms; }, PlainMs);
  double longest = 0;
  double shortest = std::numeric_limits<double>::max();
  for (int round = 0; round < kRounds; ++round) {
    const double hold = Expand(host, true).longest_hold;
    longest = std::max(longest, hold);
    shortest = std::min(shortest, hold);
  }
  return {
      {QStringLiteral("expand_10000"),
       QStringLiteral("expanding a group of 10,000 plans, controller to rows in four models, against plain rows"),
       sides.Ratio(), 0.8, Figure::AtMost, sides.Note()},
      {QStringLiteral("expand_10000_hold"),
       QStringLiteral("longest turn of the event loop meanwhile, four sorted trees, in ms with a processor"), longest,
       30.0, Figure::AtMost, QStringLiteral("the worst of %1, the best %2").arg(kRounds).arg(shortest, 0, 'f', 1)}};
}
