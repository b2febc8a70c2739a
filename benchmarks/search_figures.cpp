#include <QCoreApplication>
#include <QListView>
#include <QStandardItemModel>

#include "WidgetKit/new_location_view_widget.h"
#include "figures.h"
#include "host_fixture.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_extern_widget.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

constexpr int kGroups = 1000;
constexpr int kPlansEach = 100;
constexpr int kHits = 100;
constexpr int kRounds = 9;
const char kSearched[] = "needle";

struct Family {
  int type;
  int owner;  // place among the users, or -1
};
constexpr Family kPublic{0, -1}, kOwn{1, 0};

std::string PlanName(int serial) {
  const std::string name = "Plan " + std::to_string(serial);
  if (serial % (kGroups * kPlansEach / kHits) == 7) {
    return name + " Needle";
  }
  return name + " gate";
}

/// 100,000 plans, half of them public, half the user's own; every thousandth carries the searched word.
TarnHost::PlanSite MakeSite() {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  for (int group = 0; group < kGroups; ++group) {
    const Family family = group % 2 == 0 ? kPublic : kOwn;
    site.groups.push_back({"Sector " + std::to_string(group), -1, family.type, family.owner});
    for (int number = 0; number < kPlansEach; ++number) {
      TarnHost::PlanSite::Plan plan;
      plan.name = PlanName(group * kPlansEach + number);
      plan.group = group;
      plan.family = family.type;
      plan.owner = family.owner;
      plan.pages.emplace_back();
      site.plans.push_back(plan);
    }
  }
  return site;
}

struct PlainPlan {
  QString name, code, path;
};

std::vector<PlainPlan> PlainPlans(const TarnHost::PlanSite& site) {
  std::vector<PlainPlan> plans;
  for (size_t number = 0; number < site.plans.size(); ++number) {
    plans.push_back({QString::fromStdString(site.plans[number].name), QString::number(number),
                     QString::fromStdString(site.groups[static_cast<size_t>(site.plans[number].group)].name)});
  }
  return plans;
}

double PlainMs(const std::vector<PlainPlan>& plans, QListView& list) {
  const QString searched = QString::fromLatin1(kSearched);
  auto* model = new QStandardItemModel(&list);
  list.setModel(model);
  return TimeMs([&] {
    for (const PlainPlan& plan : plans) {
      if (!plan.name.contains(searched, Qt::CaseInsensitive)) {
        continue;
      }
      auto* row = new QStandardItem(CViewPublicDef::GetPlanIcon(true, false), plan.name);
      row->setData(plan.code, PlanIndexCodeRole);
      row->setData(searched, SearchTextRole);
      row->setData(plan.path, Qt::UserRole);
      model->appendRow(row);
    }
    if (model->rowCount() != kHits) {
      qFatal("the plain scan found %d plans", model->rowCount());
    }
  });
}

double PanelMs(CViewExternWidget& panel, QListView& list) {
  list.model()->removeRows(0, list.model()->rowCount());
  return TimeMs([&] {
    panel.OnFuzzySearchPlan();
    while (list.model()->rowCount() != kHits) {
      QCoreApplication::processEvents();
    }
  });
}

}  // namespace

Figures MeasureSearch() {
  const TarnHost::PlanSite site = MakeSite();
  const std::vector<PlainPlan> plans = PlainPlans(site);
  HostFixture host(site, {{QStringLiteral("load_all"), 0}});
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  auto* model = manager.GetViewManagerByTheme(QStringLiteral("0"), PublicTheme);
  Sides sides;
  {
    CViewExternWidget panel(nullptr);
    panel.SetModel(model);
    CStandardViewController controller(model);
    controller.setParent(nullptr);
    panel.SetStandardViewControl(&controller);
    manager.LoadAllViewManagerModelData();
    HostFixture::WaitFor([model] { return model->rowCount() > 0; });
    auto* list = panel.findChild<QListView*>(QStringLiteral("search_list_view"));
    static_cast<QLineEdit*>(panel.GetLocateViewWidget())->setText(QString::fromLatin1(kSearched));
    QListView plain;
    sides = MeasureByTurns(
        kRounds, [&] { return PanelMs(panel, *list); }, [&] { return PlainMs(plans, plain); });
  }
  return {{QStringLiteral("search_100000"),
           QStringLiteral("the panel's search for 100 of 100,000 plans in both families, call to list, against a plain "
                          "scan of the names in memory"),
           sides.Ratio(), 2.0, Figure::AtMost, sides.Note()}};
}
