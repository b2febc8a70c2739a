#include <QAbstractItemView>
#include <QCoreApplication>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QWindow>
#include <memory>

#include "bench_site.h"
#include "figures.h"
#include "host_fixture.h"
#include "item_type.h"
#include "plain_rows.h"
#include "plan_item_role.h"
#include "plan_view_tree.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;

namespace {

constexpr int kGroups = 10000;
constexpr int kPlansEach = 10;
constexpr int kPlansOfOneGroup = 1000;
constexpr int kRounds = 9;
constexpr int kPages = 40;

/// One root with `groups` groups of `plans_each` plans, all loaded.
template <class GroupRow, class PlanRow>
void Fill(QStandardItemModel& model, int groups, int plans_each, GroupRow group_row, PlanRow plan_row) {
  QStandardItem* root = group_row(0);
  QList<QStandardItem*> rows;
  for (int group = 1; group <= groups; ++group) {
    rows.append(group_row(group));
    QList<QStandardItem*> plans;
    for (int plan = 0; plan < plans_each; ++plan) {
      plans.append(plan_row(group * plans_each + plan));
    }
    rows.last()->appendRows(plans);
  }
  root->appendRows(rows);
  model.appendRow(root);
}

// A view over a sorting proxy over rows; the two sides differ in all three, and in nothing else.
struct PlainSide {
  PlainSide(int groups, int plans_each) {
    const QIcon icon = CViewPublicDef::GetPlanIcon(true, false);
    Fill(
        model, groups, plans_each, [&icon](int number) { return PlainGroupRow(BenchGroup(number), icon); },
        [&icon](int number) { return PlainPlanRow(BenchPlan(number), icon); });
    proxy.sort(0);
    proxy.setSourceModel(&model);
    view.setUniformRowHeights(true);
    view.setHeaderHidden(true);
  }
  void Attach() { view.setModel(&proxy); }

  QStandardItemModel model;
  QSortFilterProxyModel proxy;
  QTreeView view;
};

struct OurSide {
  OurSide(int groups, int plans_each) : model(param, nullptr), proxy(nullptr, false), view(nullptr) {
    Fill(
        model, groups, plans_each,
        [this](int number) {
          auto* row = new CViewGroupItem(param, BenchGroup(number));
          row->setData(true, GroupLoadedRole);
          return row;
        },
        [this](int number) { return new CViewPlanItem(param, BenchPlan(number)); });
    MarkFetched(QModelIndex());
    proxy.setSourceModel(&model);
    view.SetShowRightHoverDelgete();
  }
  void MarkFetched(const QModelIndex& parent) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
      const QModelIndex index = model.index(row, 0, parent);
      if (index.data(IsGroupRole).toBool()) {
        model.SetChildrenFetched(index, true);
        MarkFetched(index);
      }
    }
  }
  void Attach() { view.SetFilterSortModel(&proxy); }

  const ViewManagerParam param{PublicTheme, QStringLiteral("0")};
  CStandardPlanModel model;
  CViewSortFilterProxyModel proxy;
  CPlanViewTree view;
};

void Paint(QTreeView& view) {
  view.viewport()->repaint();
  QCoreApplication::processEvents();
}

void ShowView(QTreeView& view) {
  view.resize(320, 900);
  view.show();
  HostFixture::WaitFor([&view] { return view.windowHandle() && view.windowHandle()->isExposed(); });
  Paint(view);
}

/// From a view without a model to painted rows below the open root.
template <class Side>
double FirstPaintMs() {
  Side side(kGroups, kPlansEach);
  ShowView(side.view);
  side.proxy.rowCount(side.proxy.index(0, 0));  // sorting is measured elsewhere
  return TimeMs([&side] {
    side.Attach();
    side.view.expand(side.proxy.index(0, 0));
    Paint(side.view);
  });
}

template <class Side>
double ExpandMs() {
  Side side(1, kPlansOfOneGroup);
  side.Attach();
  ShowView(side.view);
  const QModelIndex root = side.proxy.index(0, 0);
  side.view.expand(root);
  Paint(side.view);
  return TimeMs([&side, &root] {
    side.view.expand(side.proxy.index(0, 0, root));
    Paint(side.view);
  });
}

template <class Side>
double ScrollMs() {
  Side side(1, kPlansOfOneGroup);
  side.Attach();
  ShowView(side.view);
  const QModelIndex root = side.proxy.index(0, 0);
  side.view.expand(root);
  side.view.expand(side.proxy.index(0, 0, root));
  side.view.setCurrentIndex(root);
  Paint(side.view);
  QScrollBar* bar = side.view.verticalScrollBar();
  return TimeMs([&side, bar] {
           for (int page = 0; page < kPages; ++page) {
             bar->triggerAction(bar->value() == bar->maximum() ? QAbstractSlider::SliderToMinimum
                                                               : QAbstractSlider::SliderPageStepAdd);
             Paint(side.view);
           }
         }) /
         kPages;
}

Figure Compare(const char* name, const char* what, double bar, double (*ours)(), double (*plain)()) {
  const Sides sides = MeasureByTurns(kRounds, ours, plain);
  return {QString::fromLatin1(name), QString::fromLatin1(what), sides.Ratio(), bar, Figure::AtMost, sides.Note()};
}

}  // namespace

Figures MeasureTreeView() {
  HostFixture host(MakeBenchSite(1, 1), {});
  return {
      Compare("tree_first_paint", "first paint, 10,000 groups of 10 plans below the open root, against a plain tree",
              2.0, FirstPaintMs<OurSide>, FirstPaintMs<PlainSide>),
      Compare("tree_expand_1000", "expanding a group of 1,000 loaded plans to painted rows, against a plain tree", 2.0,
              ExpandMs<OurSide>, ExpandMs<PlainSide>),
      Compare("tree_scroll_page", "scrolling by a page, against a plain tree", 1.5, ScrollMs<OurSide>,
              ScrollMs<PlainSide>),
  };
}
