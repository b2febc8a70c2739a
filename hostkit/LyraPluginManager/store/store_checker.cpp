#include "store/store_checker.h"

#include <algorithm>
#include <set>

#include "ResourceData/resource_type.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/rights.h"
#include "plan_rules/window_content.h"
#include "store/camera_dictionary.h"
#include "store/camera_rules.h"
#include "store/migrations.h"
#include "store/page_codec.h"
#include "store/plan_soundness.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::kDeepestLevel;
using view_plugin_protocol::kLongestName;

QString Named(const char* kind, const QString& name, int32_t code) {
  return QStringLiteral("%1 \"%2\" (%3)").arg(QLatin1String(kind), name).arg(code);
}

}  // namespace

QStringList CStoreChecker::Run() {
  const CTransaction one_state(engine_, CTransaction::kRead);
  RequireNewest(engine_);
  Try("file", [this] { CheckFile(); });
  Try("users", [this] { ReadUsers(); });
  Try("groups", [this] { CheckGroups(); });
  Try("plans", [this] { CheckPlans(); });
  Try("contents", [this] { CheckContents(); });
  Try("deletions", [this] { CheckDeletions(); });
  Try("default views", [this] { CheckDefaultViews(); });
  Try("rights", [this] { CheckRights(); });
  Try("user groups", [this] { CheckUserGroups(); });
  Try("limits of groups", [this] { CheckAudiences(); });
  Try("cameras", [this] { CheckCameras(); });
  Try("counters", [this] { CheckCounters(); });
  return findings_;
}

QString CStoreChecker::Summary() const {
  QString verdict = QStringLiteral("sound");
  if (!findings_.isEmpty()) {
    verdict = QStringLiteral("findings: %1").arg(findings_.size());
  }
  if (deletions_ > 0) {
    verdict.prepend(QStringLiteral("deletions kept to be undone: %1; ").arg(deletions_));
  }
  return QStringLiteral("%1: %2 groups, %3 plans, %4 users; %5")
      .arg(engine_.Place())
      .arg(groups_.size())
      .arg(plan_codes_.size())
      .arg(users_.size())
      .arg(verdict);
}

void CStoreChecker::Try(const char* what, const std::function<void()>& part) {
  engine_.RunOnce("SAVEPOINT part");  // a server refuses all that follows a failure, up to here
  try {
    part();
  } catch (const CStoreError& error) {
    if (error.GetKind() == CStoreError::kConnectionLost) {
      throw;
    }
    engine_.RunOnce("ROLLBACK TO SAVEPOINT part");
    Note(QStringLiteral("The %1 cannot be read: %2").arg(QLatin1String(what), error.Text().Logged()));
  }
}

void CStoreChecker::CheckFile() {
  for (const QString& line : engine_.Integrity()) {
    Note(QStringLiteral("The file is damaged: %1").arg(line.simplified()));
  }
}

void CStoreChecker::ReadUsers() {
  engine_.ForEach("SELECT id, name FROM app_user", {},
                  [this](const QSqlQuery& query) { users_[query.value(0).toInt()] = query.value(1).toString(); });
  for (const auto& [id, name] : users_) {
    if (id <= 0 || name.isEmpty()) {
      Note(QStringLiteral("User \"%1\" has the number %2.").arg(name).arg(id));
    }
  }
}

void CStoreChecker::CheckGroups() {
  for (const GroupRow& group : repository_.AllGroups()) {
    groups_[group.code] = group;
  }
  for (const auto& [code, group] : groups_) {
    CheckGroup(group);
  }
}

void CStoreChecker::CheckGroup(const GroupRow& group) {
  const QString what = Named("Group", ToQt(group.name), group.code);
  CheckName(what, ToQt(group.name));
  CheckPlace(what, group);
  const int level = LevelOf(group);
  if (level == 0) {
    Note(QStringLiteral("%1 is below itself.").arg(what));
  } else if (level > kDeepestLevel) {
    Note(QStringLiteral("%1 is on level %2; there are %3.").arg(what).arg(level).arg(kDeepestLevel));
  }
}

// The root has level 1; 0 for a group from which no way leads up. Where a parent is missing the way ends, too: that is
// said of the row below.
int CStoreChecker::LevelOf(const GroupRow& group) const {
  int level = 2;
  for (auto parent = groups_.find(group.parent); parent != groups_.end();
       parent = groups_.find(parent->second.parent)) {
    if (static_cast<size_t>(++level) > groups_.size() + 2) {
      return 0;
    }
  }
  return level;
}

template <class Row>
void CStoreChecker::CheckPlace(const QString& what, const Row& row) {
  highest_code_ = std::max(highest_code_, row.code);
  if (row.code <= 0) {
    Note(QStringLiteral("%1 has no possible code.").arg(what));
  }
  if (!view_plugin_protocol::IsFamily(row.family)) {
    Note(QStringLiteral("%1 is of an unknown family %2.").arg(what).arg(row.family));
    return;
  }
  if ((row.family == OwnFamily) != (users_.count(row.owner) != 0) || (row.family != OwnFamily && row.owner != 0)) {
    Note(QStringLiteral("%1 belongs to user %2, who cannot have it.").arg(what).arg(row.owner));
  }
  CheckParent(what, row);
}

template <class Row>
void CStoreChecker::CheckParent(const QString& what, const Row& row) {
  bool fits = false;
  if (IsRootCode(row.parent)) {
    fits = FamilyOfRoot(row.parent) == row.family;
  } else {
    const auto parent = groups_.find(row.parent);
    if (parent == groups_.end()) {
      Note(QStringLiteral("%1 is in group %2, which is not there.").arg(what).arg(row.parent));
      return;
    }
    fits = parent->second.family == row.family && parent->second.owner == row.owner;
  }
  if (!fits) {
    Note(QStringLiteral("%1 is of another family or user than what it is in.").arg(what));
  }
}

// A site's first content may have names that no one could type; none is empty, endless or has control characters.
void CStoreChecker::CheckName(const QString& what, const QString& name) {
  const auto is_control = [](QChar c) { return c.category() == QChar::Other_Control; };
  if (name.trimmed().isEmpty() || name.size() > kLongestName || std::any_of(name.begin(), name.end(), is_control)) {
    Note(QStringLiteral("%1 has no possible name.").arg(what));
  }
}

void CStoreChecker::CheckPlans() {
  CCameraDictionary(engine_, &camera_names_).ReadAgain();
  for (const NamedCamera& camera : repository_.Cameras().Names()) {
    site_cameras_.insert(camera.code);
  }
  repository_.ForEachPlan([this](const StoredPlan& plan, Vouched vouched) { CheckPlan(plan, vouched); });
}

void CStoreChecker::CheckPlan(const StoredPlan& plan, Vouched vouched) {
  const QString what = Named("Plan", plan.name, plan.row.code);
  plan_codes_[plan.row.code] += 1;
  CheckName(what, plan.name);
  CheckPlace(what, plan.row);
  if (groups_.count(plan.row.code) != 0) {
    Note(QStringLiteral("%1 has the code of a group.").arg(what));
  }
  CheckCameras(what, plan);
  if (!plan.damage.IsEmpty()) {
    Note(plan.damage.Logged());
  } else if (vouched == Vouched::kRestChanged) {
    Note(QStringLiteral("%1: name, place, picture or marks are not what was saved.").arg(what));
  } else if (vouched == Vouched::kUnknown && plan.has_checksum) {
    Note(QStringLiteral("%1 was last saved by an older program, or its revision is damaged.").arg(what));
  }
  for (const QString& time : {plan.begin_time, plan.end_time}) {
    if ((!time.isEmpty() || plan.row.auto_run) && SecondOfDay(time) < 0) {
      Note(QStringLiteral("%1: \"%2\" is not a time of day.").arg(what, time));
    }
  }
}

// A search looks for numbers, what plays are the pages.
void CStoreChecker::CheckCameras(const QString& what, const StoredPlan& plan) {
  std::set<uint32_t> expected;
  for (const NamedCamera& camera : CamerasOf(plan.pages)) {
    expected.insert(camera_names_.NumberOf(camera));
  }
  const bool is_found = expected == std::set<uint32_t>(plan.row.cameras.begin(), plan.row.cameras.end());
  if (plan.damage.IsEmpty() && !is_found) {
    Note(QStringLiteral("%1 is not found by its cameras.").arg(what));
  }
  NoteUnknownCameras(what, plan);
}

// A camera may have been removed since; its windows stay empty until somebody sees to it.
void CStoreChecker::NoteUnknownCameras(const QString& what, const StoredPlan& plan) {
  for (const auto& page : plan.pages) {
    for (const auto& window : page.windows) {
      if (view_plugin_protocol::IsCamera(window) && site_cameras_.count(window.resource_code) == 0) {
        Note(QStringLiteral("%1 shows camera \"%2\" (%3), which is not there, in window %4 of page %5.")
                 .arg(what, ToQt(window.resource_name).simplified(), ToQt(window.resource_code).simplified())
                 .arg(window.window_no)
                 .arg(page.page_no));
      }
    }
  }
}

void CStoreChecker::CheckContents() {
  engine_.ForEach(
      "SELECT code FROM plan_content WHERE code NOT IN (SELECT code FROM plan)"
      " AND code NOT IN (SELECT code FROM kept_plan) ORDER BY code",
      {}, [this](const QSqlQuery& query) {
        Note(QStringLiteral("There is content of plan %1, which is not there.").arg(query.value(0).toInt()));
      });
  engine_.ForEach("SELECT name, code FROM kept_plan WHERE code NOT IN (SELECT code FROM plan_content) ORDER BY code",
                  {}, [this](const QSqlQuery& query) {
                    Note(QStringLiteral("%1 was deleted, and its content is not kept.")
                             .arg(Named("Plan", query.value(0).toString(), query.value(1).toInt())));
                  });
}

// What can still be put back: it must belong to a deletion, and must not be there already. A deletion without a time is
// being forgotten, row by row.
void CStoreChecker::CheckDeletions() {
  deletions_ = engine_.Value("SELECT count(*) FROM deletion").toInt();
  engine_.ForEach(
      "SELECT name, code FROM deletion WHERE deleted_at <> 0 AND"
      " ((is_group = 0 AND code NOT IN (SELECT code FROM kept_plan WHERE kept_plan.deletion = deletion.code)) OR"
      " (is_group <> 0 AND code NOT IN"
      " (SELECT code FROM kept_plan_group WHERE kept_plan_group.deletion = deletion.code)))",
      {}, [this](const QSqlQuery& query) {
        Note(QStringLiteral("%1 was deleted, but is not kept.")
                 .arg(Named("Row", query.value(0).toString(), query.value(1).toInt())));
      });
  for (const char* table : {"plan_group", "plan"}) {
    const QString name = QLatin1String(table);
    highest_code_ =
        std::max(highest_code_, engine_.Value(QStringLiteral("SELECT max(code) FROM kept_%1").arg(name)).toInt());
    engine_.ForEach(QStringLiteral("SELECT name, code FROM kept_%1 WHERE code IN (SELECT code FROM %1)").arg(name), {},
                    [this](const QSqlQuery& query) {
                      Note(QStringLiteral("%1 was deleted and is there all the same.")
                               .arg(Named("Row", query.value(0).toString(), query.value(1).toInt())));
                    });
    engine_.ForEach(
        QStringLiteral("SELECT name, code FROM kept_%1 WHERE deletion NOT IN (SELECT code FROM deletion)").arg(name),
        {}, [this](const QSqlQuery& query) {
          Note(QStringLiteral("%1 was deleted, but is kept for no deletion.")
                   .arg(Named("Row", query.value(0).toString(), query.value(1).toInt())));
        });
  }
}

void CStoreChecker::CheckDefaultViews() {
  engine_.ForEach("SELECT user_id, code, type FROM default_view", {}, [this](const QSqlQuery& query) {
    const int32_t user = query.value(0).toInt(), code = query.value(1).toInt(), type = query.value(2).toInt();
    const bool is_group = type == ResourceData::RT_VIEW_GROUP && groups_.count(code) != 0;
    const bool is_plan = type != ResourceData::RT_VIEW_GROUP && plan_codes_.count(code) != 0;
    if (users_.count(user) == 0 || (!is_group && !is_plan)) {
      Note(QStringLiteral("The default view of user %1 is %2 of type %3, which is not there.")
               .arg(user)
               .arg(code)
               .arg(type));
    }
  });
}

void CStoreChecker::CheckRights() {
  engine_.ForEach("SELECT user_id, code FROM user_right", {}, [this](const QSqlQuery& query) {
    const int32_t user = query.value(0).toInt(), code = query.value(1).toInt();
    const bool is_right = view_plugin_protocol::IsRight(code) || code == view_plugin_protocol::kConfigureRight;
    if (users_.count(user) == 0 || !is_right) {
      Note(QStringLiteral("User %1 has right %2, which cannot be.").arg(user).arg(code));
    }
  });
}

void CStoreChecker::CheckUserGroups() {
  engine_.ForEach(
      "SELECT user_group_id, user_id FROM user_group_member WHERE user_id NOT IN (SELECT id FROM app_user)"
      " OR user_group_id NOT IN (SELECT id FROM user_group)",
      {}, [this](const QSqlQuery& query) {
        Note(QStringLiteral("User group %1 has user %2; one of them is not there.")
                 .arg(query.value(0).toInt())
                 .arg(query.value(1).toInt()));
      });
}

// A limit may name a group that is kept after its deletion. One that names a user group which is not there lets no one
// in for it.
void CStoreChecker::CheckAudiences() {
  engine_.ForEach(
      "SELECT audience.group_code, audience.user_group_id FROM group_audience audience WHERE"
      " (NOT EXISTS (SELECT 1 FROM plan_group WHERE code = audience.group_code AND family = 0) AND"
      " NOT EXISTS (SELECT 1 FROM kept_plan_group WHERE code = audience.group_code AND family = 0)) OR"
      " audience.user_group_id NOT IN (SELECT id FROM user_group)",
      {}, [this](const QSqlQuery& query) {
        Note(QStringLiteral("Group %1 is limited to user group %2; there is no such public group or user group.")
                 .arg(query.value(0).toInt())
                 .arg(query.value(1).toInt()));
      });
}

// An address that cannot be one is not repeated: a password may stand in it.
void CStoreChecker::CheckCameras() {
  for (const char* table : {"camera_stream", "camera_access", "camera_preset", "favorite_camera"}) {
    engine_.ForEach(QStringLiteral("SELECT DISTINCT camera_id FROM %1 WHERE camera_id NOT IN (SELECT id FROM camera)")
                        .arg(QLatin1String(table)),
                    {}, [this, table](const QSqlQuery& query) {
                      Note(QStringLiteral("There are rows of camera %1, which is not there (%2).")
                               .arg(query.value(0).toInt())
                               .arg(QLatin1String(table)));
                    });
  }
  CheckRegions("Camera",
               "SELECT id, name FROM camera WHERE region_id <> 0 AND region_id NOT IN (SELECT id FROM region)");
  CheckRegions("Region",
               "SELECT id, name FROM region WHERE parent_id <> 0 AND parent_id NOT IN (SELECT id FROM region)");
  engine_.ForEach("SELECT camera_id, url FROM camera_stream WHERE url <> ''", {}, [this](const QSqlQuery& query) {
    CameraAddress address;
    if (!ReadStreamAddress(query.value(1).toString(), &address).IsEmpty() || !address.user.empty()) {
      Note(QStringLiteral("Camera %1 has an address that cannot be one.").arg(query.value(0).toInt()));
    }
  });
}

void CStoreChecker::CheckRegions(const char* kind, const char* lost_rows) {
  engine_.ForEach(QLatin1String(lost_rows), {}, [this, kind](const QSqlQuery& query) {
    Note(QStringLiteral("%1 is in a region that is not there.")
             .arg(Named(kind, query.value(1).toString(), query.value(0).toInt())));
  });
}

void CStoreChecker::CheckCounters() {
  const qint64 last_code = engine_.Value("SELECT value FROM counter WHERE name = 'code'").toLongLong();
  if (last_code < highest_code_) {
    Note(QStringLiteral("Codes are given from %1 on, but %2 is in use.").arg(last_code + 1).arg(highest_code_));
  }
  const qint64 changes = engine_.Value("SELECT max(seq) FROM change_log").toLongLong();
  if (changes > repository_.NewestChange()) {
    Note(
        QStringLiteral("The log has change %1, but only %2 are counted.").arg(changes).arg(repository_.NewestChange()));
  }
}

}  // namespace TarnHost::Store
