#include <QCoreApplication>
#include <QListView>
#include <QStandardItemModel>
#include <algorithm>

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

constexpr int kCameraPlans = 10000;
constexpr int kWindows = 16;
const char kSearchedCamera[] = "weighbridge";

/// 10,000 public plans of 16 cameras each; none is called what is searched, every hundredth shows a camera that is.
TarnHost::PlanSite MakeCameraSite() {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  for (int serial = 0; serial < kCameraPlans; ++serial) {
    if (serial % kPlansEach == 0) {
      site.groups.push_back({"Sector " + std::to_string(serial), -1, kPublic.type, kPublic.owner});
    }
    TarnHost::PlanSite::Plan plan;
    plan.name = "Plan " + std::to_string(serial);
    plan.group = serial / kPlansEach;
    plan.pages.emplace_back();
    plan.pages.back().split_type = 8;
    for (int window = 1; window <= kWindows; ++window) {
      const int camera = (serial * 7 + window) % kCameraPlans + 1;
      plan.pages.back().windows.push_back(
          {window, 1, std::to_string(camera), "CAM " + std::to_string(camera) + " Gate", 0, 0});
    }
    if (serial % (kCameraPlans / kHits) == 7) {
      plan.pages.back().windows.back() = {kWindows, 1, "1", "CAM 1 Weighbridge", 0, 0};
    }
    site.plans.push_back(plan);
  }
  return site;
}

/// A plan as somebody would keep it who searches it in memory.
struct PlainPlan {
  QString name, code, path;
  QStringList cameras;

  bool Contains(const QString& searched) const {
    return name.contains(searched, Qt::CaseInsensitive) ||
           std::any_of(cameras.begin(), cameras.end(),
                       [&searched](const QString& camera) { return camera.contains(searched, Qt::CaseInsensitive); });
  }
};

std::vector<PlainPlan> PlainPlans(const TarnHost::PlanSite& site) {
  std::vector<PlainPlan> plans;
  for (size_t number = 0; number < site.plans.size(); ++number) {
    plans.push_back({QString::fromStdString(site.plans[number].name),
                     QString::number(number),
                     QString::fromStdString(site.groups[static_cast<size_t>(site.plans[number].group)].name),
                     {}});
    for (const auto& page : site.plans[number].pages) {
      for (const auto& window : page.windows) {
        plans.back().cameras.append(QString::fromStdString(window.resource_name));
      }
    }
  }
  return plans;
}

double PlainMs(const std::vector<PlainPlan>& plans, const QString& searched, QListView& list) {
  auto* model = new QStandardItemModel(&list);
  list.setModel(model);
  return TimeMs([&] {
    for (const PlainPlan& plan : plans) {
      if (!plan.Contains(searched)) {
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

// Ours against the plain scan, for a text with kHits hits.
Sides MeasureSite(const TarnHost::PlanSite& site, const QString& searched) {
  const std::vector<PlainPlan> plans = PlainPlans(site);
  HostFixture host(site, {{QStringLiteral("load_all"), 0}});
  host.RestartPlugin();
  auto& manager = CViewModelDataManager::Instance();
  auto* model = manager.GetViewManagerByTheme(QStringLiteral("0"), PublicTheme);
  CViewExternWidget panel(nullptr);
  panel.SetModel(model);
  CStandardViewController controller(model);
  controller.setParent(nullptr);
  panel.SetStandardViewControl(&controller);
  manager.LoadAllViewManagerModelData();
  HostFixture::WaitFor([model] { return model->rowCount() > 0; });
  auto* list = panel.findChild<QListView*>(QStringLiteral("search_list_view"));
  static_cast<QLineEdit*>(panel.GetLocateViewWidget())->setText(searched);
  QListView plain;
  return MeasureByTurns(
      kRounds, [&] { return PanelMs(panel, *list); }, [&] { return PlainMs(plans, searched, plain); });
}

}  // namespace

Figures MeasureSearch() {
  const Sides names = MeasureSite(MakeSite(), QString::fromLatin1(kSearched));
  const Sides cameras = MeasureSite(MakeCameraSite(), QString::fromLatin1(kSearchedCamera));
  return {
      {QStringLiteral("search_100000"),
       QStringLiteral("the panel's search for 100 of 100,000 plans in both families, call to list, against a plain "
                      "scan of the names in memory"),
       names.Ratio(), 2.0, Figure::AtMost, names.Note()},
      {QStringLiteral("search_cameras"),
       QStringLiteral("the panel's search for 100 of 10,000 plans by one of their 16 cameras, call to list, against "
                      "a plain scan of all names in memory"),
       cameras.Ratio(), 2.0, Figure::AtMost, cameras.Note()}};
}
