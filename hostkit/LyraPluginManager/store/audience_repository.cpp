#include "store/audience_repository.h"

#include <algorithm>

#include "plan_rules/rights.h"
#include "store/plan_repository.h"
#include "store/store_functions.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::kConfigureRight;

// Begins a statement that takes a group's code: 'tree' has the codes of the group and of all above it, of those also
// that are kept after a deletion.
const char kGroupsAbove[] =
    "WITH RECURSIVE tree (code) AS (SELECT CAST(? AS INTEGER)"
    " UNION SELECT coalesce(live.parent_code, kept.parent_code) FROM tree"
    " LEFT JOIN plan_group live ON live.code = tree.code"
    " LEFT JOIN kept_plan_group kept ON kept.code = tree.code) ";

}  // namespace

GroupAudiences CAudienceRepository::All() {
  GroupAudiences all;
  engine_.ForEach("SELECT group_code, user_group_id FROM group_audience", {}, [&all](const QSqlQuery& query) {
    all.limited[query.value(0).toInt()].insert(query.value(1).toInt());
  });
  engine_.ForEach("SELECT user_id, user_group_id FROM user_group_member", {}, [&all](const QSqlQuery& query) {
    all.viewers[query.value(0).toInt()].user_groups.insert(query.value(1).toInt());
  });
  engine_.ForEach("SELECT user_id FROM user_right WHERE code = ?", {kConfigureRight},
                  [&all](const QSqlQuery& query) { all.viewers[query.value(0).toInt()].configures = true; });
  return all;
}

Viewer CAudienceRepository::ViewerOf(int32_t user) {
  Viewer viewer;
  engine_.ForEach("SELECT user_group_id FROM user_group_member WHERE user_id = ?", {user},
                  [&viewer](const QSqlQuery& query) { viewer.user_groups.insert(query.value(0).toInt()); });
  viewer.configures =
      engine_.Value("SELECT 1 FROM user_right WHERE user_id = ? AND code = ?", {user, kConfigureRight}).isValid();
  return viewer;
}

// `groups` makes 'tree' of the code. Mostly nothing there is limited, and the user need not be known.
bool CAudienceRepository::Admits(const QString& groups, int32_t code, int32_t user) {
  std::unordered_map<int32_t, Audience> limited;
  engine_.ForEach(
      groups + "SELECT group_code, user_group_id FROM group_audience WHERE group_code IN (SELECT code FROM tree)",
      {code}, [&limited](const QSqlQuery& query) { limited[query.value(0).toInt()].insert(query.value(1).toInt()); });
  if (limited.empty()) {
    return true;
  }
  const Viewer viewer = ViewerOf(user);
  return std::all_of(limited.begin(), limited.end(),
                     [&viewer](const auto& group) { return IsAdmitted(viewer, group.second); });
}

bool CAudienceRepository::IsOpenUpFrom(int32_t group, int32_t user) {
  return IsRootCode(group) || Admits(kGroupsAbove, group, user);
}

bool CAudienceRepository::IsOpenBelow(int32_t group, int32_t user) {
  CStoreFunctions* functions = engine_.Functions();
  return Admits(kGroupTree, group, user) && (functions == nullptr || functions->IsOpenBelow(group));
}

bool CAudienceRepository::IsVisible(const CKeptDeletions::Deletion& deletion, int32_t user) {
  return IsVisibleIn(deletion.is_group ? deletion.code : deletion.parent, deletion, user);
}

bool CAudienceRepository::IsKeptPlanVisible(int32_t plan, int32_t user) {
  PlanRow row;
  engine_.ForEach("SELECT parent_code, family, owner_id FROM kept_plan WHERE code = ?", {plan},
                  [&row](const QSqlQuery& query) {
                    row.parent = query.value(0).toInt();
                    row.family = query.value(1).toInt();
                    row.owner = query.value(2).toInt();
                  });
  return IsVisible(row, user);
}

std::optional<int32_t> CAudienceRepository::UserGroup(const QString& name) {
  const QVariant id = engine_.Value("SELECT id FROM user_group WHERE name = ?", {name});
  return id.isValid() ? std::make_optional(id.toInt()) : std::nullopt;
}

int32_t CAudienceRepository::UserGroupToFill(const QString& name) {
  if (const auto known = UserGroup(name)) {
    return *known;
  }
  const int32_t id = engine_.Value("SELECT max(id) FROM user_group").toInt() + 1;
  engine_.Execute("INSERT INTO user_group (id, name) VALUES (?, ?)", {id, name});
  return id;
}

std::set<int32_t> CAudienceRepository::Numbers(const QString& statement, int32_t value) {
  std::set<int32_t> numbers;
  engine_.ForEach(statement, {value}, [&numbers](const QSqlQuery& query) { numbers.insert(query.value(0).toInt()); });
  return numbers;
}

bool CAudienceRepository::SetMembers(int32_t user_group, const std::set<int32_t>& users) {
  if (Numbers("SELECT user_id FROM user_group_member WHERE user_group_id = ?", user_group) == users) {
    return false;
  }
  engine_.Execute("DELETE FROM user_group_member WHERE user_group_id = ?", {user_group});
  for (const int32_t user : users) {
    engine_.Execute("INSERT INTO user_group_member (user_group_id, user_id) VALUES (?, ?)", {user_group, user});
  }
  return true;
}

bool CAudienceRepository::SetAudience(int32_t group, const Audience& audience) {
  if (Numbers("SELECT user_group_id FROM group_audience WHERE group_code = ?", group) == audience) {
    return false;
  }
  engine_.Execute("DELETE FROM group_audience WHERE group_code = ?", {group});
  for (const int32_t user_group : audience) {
    engine_.Execute("INSERT INTO group_audience (group_code, user_group_id) VALUES (?, ?)", {group, user_group});
  }
  return true;
}

}  // namespace TarnHost::Store
