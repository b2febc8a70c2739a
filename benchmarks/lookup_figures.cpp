#include <QStandardItemModel>
#include <random>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "figures.h"
#include "plain_rows.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"

using namespace TarnPlanView;

namespace {

constexpr int kPlansEach = 10;
constexpr int kLookUps = 200000;
constexpr int kHotCodes = 200;
constexpr int kRounds = 15;  // short ones: a disturbance must not cover them all

/// A tree of `groups` groups with ten plans each, without a host.
std::unique_ptr<CStandardPlanModel> MakeModel(int groups) {
  const ViewManagerParam param(PublicTheme, QStringLiteral("0"));
  auto model = std::make_unique<CStandardPlanModel>(param, nullptr);
  QList<QStandardItem*> rows;
  for (int group = 0; group < groups; ++group) {
    rows.append(new CViewGroupItem(param, BenchGroup(group + 1)));
  }
  model->invisibleRootItem()->appendRows(rows);
  for (int group = 0; group < groups; ++group) {
    QList<QStandardItem*> plans;
    for (int plan = 0; plan < kPlansEach; ++plan) {
      plans.append(new CViewPlanItem(param, BenchPlan(group * kPlansEach + plan)));
    }
    rows[group]->appendRows(plans);
  }
  return model;
}

QStringList RandomCodes(int plans, int count) {
  std::mt19937 random(20240229);
  std::uniform_int_distribution<int> pick(0, plans - 1);
  QStringList codes;
  for (int i = 0; i < count; ++i) {
    codes.append(QString::number(1000000 + pick(random)));
  }
  return codes;
}

/// Nanoseconds of one look-up, over kLookUps of them.
double LookUpNs(const CStandardPlanModel& model, const QStringList& codes) {
  int found = 0;
  const double ms = TimeMs([&] {
    for (int i = 0; i < kLookUps; ++i) {
      found += static_cast<int>(model.FindIndexByIndexCode(codes[i % codes.size()], false).isValid());
    }
  });
  if (found != kLookUps) {
    qFatal("a code was not found");
  }
  return ms * 1e6 / kLookUps;
}

double MatchNs(const CStandardPlanModel& model, const QStringList& codes) {
  constexpr int kMatches = 20;
  const double ms = TimeMs([&] {
    for (int i = 0; i < kMatches; ++i) {
      if (model.match(model.index(0, 0), PlanIndexCodeRole, codes[i], 1, Qt::MatchExactly | Qt::MatchRecursive)
              .isEmpty()) {
        qFatal("a code was not found");
      }
    }
  });
  return ms * 1e6 / kMatches;
}

QString NsNote(double ours, double other) {
  return QStringLiteral("%1 ns against %2 ns").arg(ours, 0, 'f', 1).arg(other, 0, 'f', 1);
}

}  // namespace

Figures MeasureLookUps() {
  const auto small = MakeModel(100);
  const auto large = MakeModel(10000);
  const QStringList small_random = RandomCodes(1000, kLookUps);
  const QStringList large_random = RandomCodes(100000, kLookUps);
  const QStringList small_hot = RandomCodes(1000, kHotCodes);
  const QStringList large_hot = RandomCodes(100000, kHotCodes);
  const Sides random = MeasureByTurns(
      kRounds, [&] { return LookUpNs(*large, large_random); }, [&] { return LookUpNs(*small, small_random); });
  const Sides hot = MeasureByTurns(
      kRounds, [&] { return LookUpNs(*large, large_hot); }, [&] { return LookUpNs(*small, small_hot); });
  const double match = MatchNs(*large, large_random);
  return {
      {QStringLiteral("lookup_match"), QStringLiteral("match() against a look-up by code, 110,000 rows"),
       match / random.ours, 1000.0, Figure::AtLeast, NsNote(match, random.ours)},
      {QStringLiteral("lookup_random"), QStringLiteral("look-up of random codes, 110,000 rows against 1,100"),
       random.Ratio(), 4.0, Figure::AtMost, NsNote(random.ours, random.plain)},
      {QStringLiteral("lookup_hot"), QStringLiteral("look-up of 200 hot codes, 110,000 rows against 1,100"),
       hot.Ratio(), 2.0, Figure::AtMost, NsNote(hot.ours, hot.plain)},
  };
}
