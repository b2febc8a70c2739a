#pragma once

#include "moving/import_plan.h"
#include "store/camera_dictionary.h"
#include "store/plan_repository.h"

namespace TarnHost::Moving {

/// Writes what was decided, inside the caller's transaction, and has the desks that are open read it. Throws
/// CStoreError. Thread: the engine's.
class CImportWriter {
 public:
  explicit CImportWriter(Store::CSqlEngine& engine) : engine_(engine), repository_(engine), dictionary_(engine) {}

  /// What is said of the users' roles at a server comes to the report.
  void Write(ImportPlan* plan, const SiteRecords& here);

 private:
  void WriteUsers(const ImportPlan& plan);
  void WriteUser(const Saved<UserRecord>& user);
  void MakeRoles(CImportReport* report);
  void KeepOut(const UserRecord& user);
  void WriteChoices(const UserRecord& user);
  void WriteUserGroups(const ImportPlan& plan);
  void WriteRegions(const ImportPlan& plan);
  void WriteCameras(const ImportPlan& plan);
  void WriteStreams(const ImportPlan& plan, std::map<int32_t, CameraAccess>* access);
  void WriteGroups(const ImportPlan& plan);
  void WritePlan(const Saved<PlanRecord>& plan);
  void WriteNumbers(const LastNumbers& last);
  void TellDesks(const ImportPlan& plan);
  int32_t UserId(const QString& name) const;

  Store::CSqlEngine& engine_;
  Store::CPlanRepository repository_;
  Store::CCameraDictionary dictionary_;
  std::map<QString, int32_t> users_, user_groups_;
};

}  // namespace TarnHost::Moving
