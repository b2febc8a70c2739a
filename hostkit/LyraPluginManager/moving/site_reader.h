#pragma once

#include <QStringList>
#include <functional>

#include "moving/site_records.h"
#include "store/plan_repository.h"
#include "store/sql_engine.h"

namespace TarnHost::Moving {

/// Reads what a store has of a site, inside the caller's transaction. Throws CStoreError. Thread: the engine's.
class CSiteReader {
 public:
  explicit CSiteReader(Store::CSqlEngine& engine) : engine_(engine), repository_(engine) {}

  /// All but the plans.
  SiteRecords Read();
  /// Calls take(plan) with each, in the order of the codes; a damaged one comes with the reason instead of its content.
  /// After Read().
  void ForEachPlan(const std::function<void(PlanRecord plan, const QString& damage)>& take);

 private:
  void ReadUsers(SiteRecords* site);
  void ReadUserGroups(SiteRecords* site);
  void ReadCameras(SiteRecords* site);
  void ReadGroups(SiteRecords* site);
  QString UserName(int32_t id) const;

  Store::CSqlEngine& engine_;
  Store::CPlanRepository repository_;
  std::map<int32_t, QString> users_;
};

}  // namespace TarnHost::Moving
