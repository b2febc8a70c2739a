#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <algorithm>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "MarUIControl/tree_view.h"
#include "WidgetKit/new_location_view_widget.h"
#include "figures.h"
#include "plain_rows.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;

namespace {

constexpr int kGroups = 10000;
constexpr int kPlansEach = 10;
constexpr int kRounds = 7;
const char kOnlyHit[] = "the needle in the hay";

QString LastName() {
  return QStringLiteral("zzz ") + QLatin1String(kOnlyHit);
}

view_plugin_protocol::PlanBasicInfo PlanAt(int number) {
  view_plugin_protocol::PlanBasicInfo plan = BenchPlan(number);
  if (number == kGroups * kPlansEach - 1) {
    plan.name = LastName().toStdString();
  }
  return plan;
}

view_plugin_protocol::PlanGroup GroupAt(int group) {
  view_plugin_protocol::PlanGroup record = BenchGroup(group + 1);
  if (group == kGroups - 1) {
    record.name = "zzz";  // the last in the order of names, too
  }
  return record;
}

/// kGroups rows with ten plans each, made by the two functions.
template <class MakeGroup, class MakePlan>
void Fill(QStandardItemModel& model, MakeGroup group_row, MakePlan plan_row) {
  QList<QStandardItem*> groups;
  for (int group = 0; group < kGroups; ++group) {
    groups.append(group_row(GroupAt(group)));
    QList<QStandardItem*> plans;
    for (int plan = 0; plan < kPlansEach; ++plan) {
      plans.append(plan_row(PlanAt(group * kPlansEach + plan)));
    }
    groups.last()->appendRows(plans);
  }
  model.invisibleRootItem()->appendRows(groups);
}

std::unique_ptr<QStandardItemModel> MakePlainModel() {
  auto model = std::make_unique<QStandardItemModel>();
  Fill(
      *model, [](const auto& group) { return PlainGroupRow(group, QIcon()); },
      [](const auto& plan) { return PlainPlanRow(plan, QIcon()); });
  return model;
}

std::unique_ptr<QStandardItemModel> MakePlanModel() {
  const ViewManagerParam param(PublicTheme, QStringLiteral("0"));
  auto model = std::make_unique<CStandardPlanModel>(param, nullptr);
  Fill(
      *model, [&param](const auto& group) { return new CViewGroupItem(param, group); },
      [&param](const auto& plan) { return new CViewPlanItem(param, plan); });
  return model;
}

double MatchMs(const QAbstractItemModel& model) {
  int hits = 0;
  const double ms = TimeMs([&] {
    hits = model
               .match(model.index(0, 0), Qt::DisplayRole, QString::fromLatin1(kOnlyHit), 1,
                      Qt::MatchContains | Qt::MatchRecursive)
               .size();
  });
  const QModelIndex last_group = model.index(model.rowCount() - 1, 0);
  if (hits != 1 || model.index(kPlansEach - 1, 0, last_group).data().toString() != LastName()) {
    qFatal("the hit is not in the last row");
  }
  return ms;
}

/// A shown tree over a proxy, and a field that locates in it.
class LocateSide {
 public:
  explicit LocateSide(QAbstractItemModel* proxy) {
    tree_.setModel(proxy);
    tree_.resize(300, 600);
    tree_.show();
    QCoreApplication::processEvents();
    field_.SetView(&tree_);
  }

  /// From the call to the hit on screen. The longest time that the event loop did not come round is kept.
  double LocateMs() {
    field_.ClearFilterText();
    tree_.collapseAll();
    tree_.setCurrentIndex(tree_.model()->index(0, 0));
    QCoreApplication::processEvents();
    field_.setText(QString::fromLatin1(kOnlyHit));
    const double ms = TimeMs([this] {
      Turn([this] { field_.Locate(); });
      while (field_.IsLocating()) {
        Turn([] { QCoreApplication::processEvents(); });
      }
    });
    Turn([] { QCoreApplication::processEvents(); });  // what the move to the hit left to paint
    if (field_.HitCount() != 1 || !tree_.currentIndex().data().toString().endsWith(QLatin1String(kOnlyHit)) ||
        !tree_.viewport()->rect().contains(tree_.visualRect(tree_.currentIndex()))) {
      qFatal("the field did not show the hit");
    }
    return ms;
  }
  double WorstHoldMs() const { return worst_hold_; }

 private:
  void Turn(const std::function<void()>& work) { worst_hold_ = std::max(worst_hold_, TimeMs(work)); }

  MarUIControl::CTreeView tree_;
  WidgetKit::CNewLocationViewWidget field_;
  double worst_hold_ = 0;
};

Figures MeasureOver(const QString& name, const QString& what, QSortFilterProxyModel& proxy, QStandardItemModel& rows) {
  proxy.setSourceModel(&rows);
  proxy.sort(0);
  MatchMs(proxy);  // both sides find the proxy's mappings made
  LocateSide side(&proxy);
  const Sides sides = MeasureByTurns(
      kRounds, [&] { return side.LocateMs(); }, [&] { return MatchMs(proxy); });
  return {{name, what + QStringLiteral(", against match() on the same proxy"), sides.Ratio(), 1.0, Figure::AtMost,
           sides.Note()},
          {name + QStringLiteral("_hold"), QStringLiteral("longest turn of the event loop, in ms"), side.WorstHoldMs(),
           16.0, Figure::AtMost, QStringLiteral("the worst of %1 looks").arg(kRounds)}};
}

}  // namespace

Figures MeasureLocate() {
  const auto plain_rows = MakePlainModel();
  QSortFilterProxyModel plain_proxy;
  Figures figures =
      MeasureOver(QStringLiteral("locate_110000"), QStringLiteral("locate the only hit, in the last of 110,000 rows"),
                  plain_proxy, *plain_rows);
  const auto plan_rows = MakePlanModel();
  CViewSortFilterProxyModel plan_proxy(nullptr, false);
  const Figures panel =
      MeasureOver(QStringLiteral("locate_panel"), QStringLiteral("the same over the panel's own model and proxy"),
                  plan_proxy, *plan_rows);
  figures.insert(figures.end(), panel.begin(), panel.end());
  return figures;
}
