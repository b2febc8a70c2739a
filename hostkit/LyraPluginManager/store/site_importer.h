#pragma once

#include <QDateTime>

#include "TarnHost/plan_site.h"
#include "store/camera_dictionary.h"
#include "store/plan_repository.h"

namespace TarnHost::Store {

/// Fills a new store with a site, inside the caller's transaction. Throws CStoreError for a site whose parts refer to
/// something that is not there. Thread: the engine's.
class CSiteImporter {
 public:
  CSiteImporter(CSqlEngine& engine, const PlanSite& site, const QDateTime& now);

  /// Once.
  void Run();

 private:
  void ImportInfo();
  void ImportUsers();
  void ImportAudience(size_t place);
  void ImportCameras();
  void ImportCamera(int32_t id, const PlanSite::Camera& camera);
  void ImportSwitches();
  void ImportGroups(int32_t first_code);
  GroupRow GroupAt(size_t place, int32_t first_code) const;
  void ImportPlans(int32_t first_code);
  void ImportDefaultViews(int32_t first_plan);
  StoredPlan Content(const PlanSite::Plan& plan) const;
  std::list<view_plugin_protocol::PlanPage> Pages(const PlanSite::Plan& plan) const;
  void ResolveCamera(view_plugin_protocol::PlanWindow* window) const;
  QString CreatorOf(const PlanSite::Plan& plan) const;

  CSqlEngine& engine_;
  CPlanRepository repository_;
  CCameraDictionary cameras_;
  const PlanSite& site_;
  const QString now_;
  std::vector<GroupRow> groups_;  // as imported
};

}  // namespace TarnHost::Store
