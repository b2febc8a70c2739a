#include "bench_site.h"

#include <string>

namespace {

view_plugin_protocol::PlanPage OneCameraPage() {
  view_plugin_protocol::PlanPage page;
  view_plugin_protocol::PlanWindow window;
  window.content_kind = 1;
  window.resource_code = "#0";
  window.resource_name = "CAM 001";
  page.windows.push_back(window);
  return page;
}

}  // namespace

TarnHost::PlanSite MakeBenchSite(int groups, int plans_each) {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  site.regions.push_back({"Site", -1});
  site.cameras.push_back({"CAM 001", 0, true, {}, {0, 1}});
  for (int group = 0; group < groups; ++group) {
    site.groups.push_back({"Sector " + std::to_string(group + 1), -1, 0, -1});
    for (int number = 0; number < plans_each; ++number) {
      TarnHost::PlanSite::Plan plan;
      plan.name = "Plan " + std::to_string(group + 1) + "-" + std::to_string(number + 1);
      plan.group = group;
      plan.pages.push_back(OneCameraPage());
      site.plans.push_back(plan);
    }
  }
  return site;
}
