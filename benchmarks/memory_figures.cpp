#include <malloc.h>

#include <QStandardItemModel>

#include "figures.h"
#include "plain_rows.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kPlans = 100000;

double HeapBytes() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

double PlainBytes() {
  const QIcon icon = CViewPublicDef::GetPlanIcon(true, false);
  QStandardItemModel model;
  model.appendRow(PlainGroupRow(BenchGroup(1), icon));
  const double before = HeapBytes();
  {
    QList<QStandardItem*> rows;
    for (int plan = 0; plan < kPlans; ++plan) {
      rows.append(PlainPlanRow(BenchPlan(plan), icon));
    }
    model.item(0)->appendRows(rows);
  }
  return (HeapBytes() - before) / kPlans;
}

double OurBytes() {
  const ViewManagerParam param(PublicTheme, QStringLiteral("0"));
  CStandardPlanModel model(param, nullptr);
  model.appendRow(new CViewGroupItem(param, BenchGroup(1)));
  const double before = HeapBytes();
  {
    QList<QStandardItem*> rows;
    for (int plan = 0; plan < kPlans; ++plan) {
      rows.append(new CViewPlanItem(param, BenchPlan(plan)));
    }
    model.item(0)->appendRows(rows);
  }
  return (HeapBytes() - before) / kPlans;
}

}  // namespace

Figures MeasureMemory() {
  const double plain = PlainBytes();
  const double ours = OurBytes();
  return {{QStringLiteral("row_memory"),
           QStringLiteral("memory of a plan row with its look-up entry against a plain row"), ours / plain, 1.8,
           Figure::AtMost, QStringLiteral("%1 bytes against %2 bytes").arg(ours, 0, 'f', 0).arg(plain, 0, 'f', 0)}};
}
