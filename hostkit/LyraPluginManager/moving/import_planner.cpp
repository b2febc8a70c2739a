#include "moving/import_planner.h"

#include <utility>

#include "moving/camera_import.h"
#include "moving/tree_import.h"
#include "moving/user_import.h"

namespace TarnHost::Moving {

ImportPlan PlanImport(SiteFile file, const StandingSite& here) {
  ImportPlan plan;
  plan.report.left_out = std::move(file.left_out);
  const bool is_same_site = file.records.site == here.records.site;
  CUserImport users(here, is_same_site, &plan);
  users.TakeUsers(file.records.users);
  users.TakeUserGroups(std::move(file.records.user_groups));
  CCameraImport cameras(here, is_same_site, &plan);
  cameras.TakeRegions(std::move(file.records.regions));
  cameras.TakeCameras(std::move(file.records.cameras));
  CTreeImport tree(here, is_same_site, &plan);
  tree.DropDoubles(&file.records);
  tree.TakeGroups(std::move(file.records.groups), users);
  tree.TakePlans(std::move(file.records.plans), users, {cameras.CameraCodes(), file.records.site});
  users.TakeChoices(file.records.users, cameras.CameraCodes(), tree.GroupCodes(), tree.PlanCodes());
  return plan;
}

}  // namespace TarnHost::Moving
