#include <QCollator>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <algorithm>
#include <random>

#include "figures.h"
#include "plain_rows.h"
#include "standard_plan_model.h"
#include "view_manager_param.h"
#include "view_plan_item.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;

namespace {

constexpr int kSiblings = 100000;
constexpr int kRounds = 5;

/// What a proxy looks like that compares names with a collator, and nothing else.
class CollatorProxy : public QSortFilterProxyModel {
 public:
  CollatorProxy() : collator_(QLocale(QLocale::English, QLocale::UnitedStates)) {
    collator_.setNumericMode(true);
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    sort(0);
  }
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
    return collator_.compare(left.data().toString(), right.data().toString()) < 0;
  }

 private:
  QCollator collator_;
};

class CountingProxy : public CViewSortFilterProxyModel {
 public:
  CountingProxy() : CViewSortFilterProxyModel(nullptr, false) {}
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
    ++comparisons;
    return CViewSortFilterProxyModel::lessThan(left, right);
  }
  mutable int comparisons = 0;
};

std::unique_ptr<CStandardPlanModel> MakeSiblings() {
  std::vector<int> numbers(kSiblings);
  for (int i = 0; i < kSiblings; ++i) {
    numbers[i] = i;
  }
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(7));
  const ViewManagerParam param(PublicTheme, QStringLiteral("0"));
  QList<QStandardItem*> rows;
  for (const int number : numbers) {
    rows.append(new CViewPlanItem(param, BenchPlan(number)));
  }
  auto model = std::make_unique<CStandardPlanModel>(param, nullptr);
  model->invisibleRootItem()->appendRows(rows);
  return model;
}

/// Makes rows of its own, so that no key of an earlier round helps.
template <class Proxy>
double SortMs(Proxy& proxy) {
  const auto model = MakeSiblings();
  const double ms = TimeMs([&] {
    proxy.setSourceModel(model.get());
    proxy.rowCount();
  });
  if (proxy.index(1, 0).data().toString() != QLatin1String("Plan 1")) {
    qFatal("the proxy did not sort");
  }
  proxy.setSourceModel(nullptr);
  return ms;
}

int ComparisonsAfterRename() {
  const auto model = MakeSiblings();
  CountingProxy proxy;
  proxy.setSourceModel(model.get());
  proxy.rowCount();
  int worst = 0;
  for (int row = 0; row < kSiblings; row += kSiblings / 20) {
    proxy.comparisons = 0;
    model->item(row)->setText(QStringLiteral("Plan %1 renamed").arg((row * 7919) % kSiblings));
    worst = std::max(worst, proxy.comparisons);
  }
  return worst;
}

}  // namespace

Figures MeasureSorting() {
  const Sides sides = MeasureByTurns(
      kRounds,
      [] {
        CViewSortFilterProxyModel proxy(nullptr, false);
        return SortMs(proxy);
      },
      [] {
        CollatorProxy proxy;
        return SortMs(proxy);
      });
  return {
      {QStringLiteral("sort_100000"),
       QStringLiteral("sorting 100,000 siblings against a proxy that asks a collator each time"), sides.Ratio(), 0.4,
       Figure::AtMost, sides.Note()},
      {QStringLiteral("rename_comparisons"), QStringLiteral("comparisons after one rename among 100,000 siblings"),
       static_cast<double>(ComparisonsAfterRename()), 100.0, Figure::AtMost, QStringLiteral("worst of 20 renames")},
  };
}
