#include <malloc.h>

#include <QStandardItemModel>
#include <memory>
#include <vector>

#include "figures.h"
#include "plain_rows.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kPlans = 100000;
constexpr int kPublicModels = 4;

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

// A plan's rows in all models share its record, as they do when the manager makes them.
double OurBytes(int model_count) {
  const ViewManagerParam param(PublicTheme, QStringLiteral("0"));
  std::vector<std::unique_ptr<CStandardPlanModel>> models;
  for (int number = 0; number < model_count; ++number) {
    models.push_back(std::make_unique<CStandardPlanModel>(param, nullptr));
    models.back()->appendRow(new CViewGroupItem(param, BenchGroup(1)));
  }
  const double before = HeapBytes();
  {
    std::vector<QList<QStandardItem*>> rows(models.size());
    for (int plan = 0; plan < kPlans; ++plan) {
      const CRowRecord::Ptr record = CRowRecord::Of(BenchPlan(plan));
      for (auto& rows_of_model : rows) {
        rows_of_model.append(new CViewPlanItem(param, record));
      }
    }
    for (size_t number = 0; number < models.size(); ++number) {
      models[number]->item(0)->appendRows(rows[number]);
    }
  }
  return (HeapBytes() - before) / (model_count * kPlans);
}

}  // namespace

Figures MeasureMemory() {
  const double plain = PlainBytes();
  const double ours = OurBytes(kPublicModels);
  return {{QStringLiteral("row_memory"),
           QStringLiteral("memory of a plan row with its look-up entry, in four models, against a plain row"),
           ours / plain, 0.75, Figure::AtMost,
           QStringLiteral("%1 bytes against %2 bytes; in one model alone %3")
               .arg(ours, 0, 'f', 0)
               .arg(plain, 0, 'f', 0)
               .arg(OurBytes(1), 0, 'f', 0)}};
}
