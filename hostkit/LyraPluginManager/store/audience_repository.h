#pragma once

#include <QString>
#include <optional>

#include "store/group_audiences.h"
#include "store/kept_deletions.h"
#include "store/plan_records.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// The statements on user groups and on what groups of plans are limited to. Throws CStoreError. Thread: the engine's.
class CAudienceRepository {
 public:
  explicit CAudienceRepository(CSqlEngine& engine) : engine_(engine) {}

  GroupAudiences All();

  /// Whether the user sees a row, as the store has it now.
  bool IsVisible(const GroupRow& group, int32_t user) { return IsVisibleIn(group.code, group, user); }
  bool IsVisible(const PlanRow& plan, int32_t user) { return IsVisibleIn(plan.parent, plan, user); }
  /// Whether the user saw what was deleted, as far as it is kept.
  bool IsVisible(const CKeptDeletions::Deletion& deletion, int32_t user);
  bool IsKeptPlanVisible(int32_t plan, int32_t user);
  /// Whether the user, who sees the group, sees all that is below it.
  bool IsOpenBelow(int32_t group, int32_t user);

  std::optional<int32_t> UserGroup(const QString& name);
  /// Makes it when it is not there.
  int32_t UserGroupToFill(const QString& name);
  /// These two answer whether that is a change. An empty audience opens the group to all.
  bool SetMembers(int32_t user_group, const std::set<int32_t>& users);
  bool SetAudience(int32_t group, const Audience& audience);

 private:
  template <class Row>
  bool IsVisibleIn(int32_t group, const Row& row, int32_t user) {
    return IsVisibleTo(row, user, [&] { return IsOpenUpFrom(group, user); });
  }
  std::set<int32_t> Numbers(const QString& statement, int32_t value);
  bool IsOpenUpFrom(int32_t group, int32_t user);
  bool Admits(const QString& groups, int32_t code, int32_t user);
  Viewer ViewerOf(int32_t user);

  CSqlEngine& engine_;
};

}  // namespace TarnHost::Store
