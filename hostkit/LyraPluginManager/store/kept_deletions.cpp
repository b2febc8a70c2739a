#include "store/kept_deletions.h"

#include <QVariantList>

#include "store/change_feed.h"
#include "store/plan_repository.h"
#include "store/store_functions.h"

namespace TarnHost::Store {
namespace {

const char kGroups[] = "plan_group";
const char kPlans[] = "plan";
const char kGroupColumns[] = "code, parent_code, family, owner_id, name";
const char kPlanColumns[] =
    "code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,"
    " cameras, creator, creation_time, revision, changed_by, changed_at, checksum";
const char kViewColumns[] = "user_id, code, type";

const char kKeptPlans[] = "kept_plan";
const char* const kKeptTables[] = {"kept_default_view", kKeptPlans, "kept_plan_group"};
constexpr int kForgottenAtOnce = 300;
constexpr int kMostKept = 1000;  // more than anybody deletes while the first can be taken back
// Instead of a time, of a deletion whose rows are being forgotten: it can't be taken back any more.
constexpr qint64 kBeingForgotten = 0;

QString TableOf(bool is_group) {
  return QLatin1String(is_group ? kGroups : kPlans);
}

}  // namespace

void CKeptDeletions::Note(const char* table, int32_t code, int32_t user, const Moment& now) {
  engine_.Execute(
      QStringLiteral("INSERT INTO deletion (code, is_group, parent_code, family, owner_id, name, namesakes, user_id,"
                     " deleted_at) SELECT code, CAST(? AS INTEGER), parent_code, family, owner_id, name,"
                     " (SELECT count(*) FROM %1 other WHERE other.parent_code = gone.parent_code AND"
                     " other.owner_id = gone.owner_id AND other.name = gone.name) - 1, CAST(? AS INTEGER),"
                     " CAST(? AS BIGINT) FROM %1 gone WHERE code = ?")
          .arg(QLatin1String(table)),
      {int(table == kGroups), user, qint64(now.at), code});
  found_[Key(code, now.at)] = {now.steady, true};
}

// The database notes and keeps by itself what its functions delete.
CKeptDeletions::Below CKeptDeletions::KeepByFunction(CStoreFunctions* functions, int32_t code, bool is_group,
                                                     int32_t user, const Moment& now) {
  found_[Key(code, now.at)] = {now.steady, true};
  return functions->Keep(code, is_group, user, now.at);
}

CKeptDeletions::Below CKeptDeletions::KeepGroup(int32_t code, int32_t user, const Moment& now) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return KeepByFunction(functions, code, true, user, now);
  }
  Note(kGroups, code, user, now);
  const auto keep = [&](const char* table, const char* columns, const char* condition) {
    return engine_.Execute(QLatin1String(kGroupTree) +
                               QStringLiteral("INSERT INTO kept_%1 (deletion, %2) SELECT CAST(? AS INTEGER), %2 FROM %1"
                                              " WHERE %3")
                                   .arg(QLatin1String(table), QLatin1String(columns), QLatin1String(condition)),
                           {code, code});
  };
  keep("default_view", kViewColumns,
       "code IN (SELECT code FROM tree) OR code IN"
       " (SELECT code FROM plan WHERE parent_code IN (SELECT code FROM tree))");
  Below below;
  below.plans = keep(kPlans, kPlanColumns, "parent_code IN (SELECT code FROM tree)");
  below.groups = keep(kGroups, kGroupColumns, "code IN (SELECT code FROM tree)") - 1;
  return below;
}

void CKeptDeletions::KeepPlan(int32_t code, int32_t user, const Moment& now) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    KeepByFunction(functions, code, false, user, now);
    return;
  }
  Note(kPlans, code, user, now);
  const auto keep = [&](const char* table, const char* columns) {
    engine_.Execute(QStringLiteral("INSERT INTO kept_%1 (deletion, %2) SELECT CAST(? AS INTEGER), %2 FROM %1"
                                   " WHERE code = ?")
                        .arg(QLatin1String(table), QLatin1String(columns)),
                    {code, code});
  };
  keep("default_view", kViewColumns);
  keep(kPlans, kPlanColumns);
}

std::optional<CKeptDeletions::Deletion> CKeptDeletions::Find(int32_t code, bool is_group) {
  return First("code = ? AND is_group = ?", {code, int(is_group)});
}

std::optional<CKeptDeletions::Deletion> CKeptDeletions::OfPlan(int32_t plan) {
  return First("code = (SELECT deletion FROM kept_plan WHERE code = ?)", {plan});
}

std::optional<CKeptDeletions::Deletion> CKeptDeletions::First(const QString& condition, const QVariantList& values) {
  std::optional<Deletion> found;
  engine_.ForEach(
      "SELECT code, is_group, parent_code, family, owner_id, name, user_id, deleted_at, namesakes FROM deletion "
      "WHERE deleted_at <> ? AND " +
          condition,
      QVariantList{kBeingForgotten} + values, [&found](const QSqlQuery& query) {
        found = {query.value(0).toInt(), query.value(1).toInt() != 0, query.value(2).toInt(),
                 query.value(3).toInt(), query.value(4).toInt(),      query.value(5).toString(),
                 query.value(6).toInt(), query.value(7).toLongLong(), query.value(8).toInt()};
      });
  return found;
}

std::chrono::seconds CKeptDeletions::AgeOf(const Deletion& deletion, const Moment& now) const {
  const auto found = found_.find(Key(deletion.code, deletion.at));
  if (found != found_.end() && found->second.is_own) {
    return std::chrono::duration_cast<std::chrono::seconds>(now.steady - found->second.since);
  }
  return std::chrono::seconds(now.at - deletion.at);
}

int32_t CKeptDeletions::NamesakesOf(const Deletion& deletion) {
  return engine_
      .Value(QStringLiteral("SELECT count(*) FROM %1 WHERE parent_code = ? AND owner_id = ? AND name = ?")
                 .arg(TableOf(deletion.is_group)),
             {deletion.parent, deletion.owner, deletion.name})
      .toInt();
}

void CKeptDeletions::CountWithKept(const Deletion& deletion) {
  if (engine_.Functions() != nullptr) {
    return;  // part of putting it back
  }
  const int removed = deletion.is_group ? ChangeEntry::kGroupRemoved : ChangeEntry::kPlanRemoved;
  engine_.Execute(
      "UPDATE deletion SET namesakes = namesakes + 1 WHERE is_group = ? AND parent_code = ? AND owner_id = ?"
      " AND name = ? AND (SELECT max(seq) FROM change_log WHERE kind = ? AND change_log.code = deletion.code) >"
      " (SELECT max(seq) FROM change_log WHERE kind = ? AND change_log.code = ?)",
      {int(deletion.is_group), deletion.parent, deletion.owner, deletion.name, removed, removed, deletion.code});
}

void CKeptDeletions::PutBack(const Deletion& deletion) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->PutBack(deletion.code);
  }
  const auto put = [&](const char* table, const char* columns, const char* condition) {
    engine_.Execute(QStringLiteral("INSERT INTO %1 (%2) SELECT %2 FROM kept_%1 WHERE deletion = ?%3")
                        .arg(QLatin1String(table), QLatin1String(columns), QLatin1String(condition)),
                    {deletion.code});
  };
  put(kGroups, kGroupColumns, "");
  put(kPlans, kPlanColumns, "");
  put("default_view", kViewColumns, " AND user_id NOT IN (SELECT user_id FROM default_view)");
  ForgetRows(deletion.code);
}

void CKeptDeletions::ForgetDefaultView(int32_t user) {
  engine_.Execute("DELETE FROM kept_default_view WHERE user_id = ?", {user});
}

void CKeptDeletions::Purge(SteadyTime now, std::chrono::seconds age) {
  LookAround(now);
  if (const auto deletion = Due(now, age)) {
    ForgetSome(*deletion);
  }
}

// Those of other users are forgotten, too.
QString CKeptDeletions::AllDeletions() const {
  return engine_.Functions() != nullptr ? QStringLiteral("tarn_deletions()") : QStringLiteral("deletion");
}

// Mostly there is nothing: then one look at one small table has to do.
void CKeptDeletions::LookAround(SteadyTime now) {
  std::map<Key, Found> found;
  engine_.ForEach("SELECT code, deleted_at FROM " + AllDeletions(), {}, [&](const QSqlQuery& query) {
    const Key key(query.value(0).toInt(), query.value(1).toLongLong());
    const auto before = found_.find(key);
    found[key] = before == found_.end() ? Found{now, false} : before->second;
  });
  found_ = std::move(found);
}

std::optional<CKeptDeletions::Key> CKeptDeletions::Due(SteadyTime now, std::chrono::seconds age) {
  for (const auto& [key, found] : found_) {
    if (key.second == kBeingForgotten || now - found.since >= age) {
      return key;
    }
  }
  if (has_old_ || found_.size() > kMostKept) {
    const auto old = FarBehind();
    has_old_ = old.has_value();
    return old;
  }
  return std::nullopt;
}

// The oldest of too many, or one from before all that the log still tells of; by the log's numbers, not by a clock.
std::optional<CKeptDeletions::Key> CKeptDeletions::FarBehind() {
  std::optional<Key> oldest;
  bool is_logged = false;
  engine_.ForEach("SELECT deletion.code, deletion.deleted_at, removal.seq FROM " + AllDeletions() +
                      " AS deletion LEFT JOIN"
                      " (SELECT code, max(seq) AS seq FROM change_log WHERE kind IN (?, ?) GROUP BY code) removal"
                      " ON removal.code = deletion.code ORDER BY coalesce(removal.seq, 0), deletion.code LIMIT 1",
                  {int(ChangeEntry::kGroupRemoved), int(ChangeEntry::kPlanRemoved)}, [&](const QSqlQuery& query) {
                    oldest = Key(query.value(0).toInt(), query.value(1).toLongLong());
                    is_logged = !query.value(2).isNull();
                  });
  if (is_logged && found_.size() <= kMostKept) {
    oldest.reset();
  }
  return oldest;
}

// What names the deletion goes last.
void CKeptDeletions::ForgetSome(const Key& deletion) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->Forget(deletion.first, kForgottenAtOnce);
  }
  int left = kForgottenAtOnce;
  for (const char* table : kKeptTables) {
    left -= ForgetSome(table, deletion.first, left);
    if (left <= 0) {
      engine_.Execute("UPDATE deletion SET deleted_at = ? WHERE code = ?", {kBeingForgotten, deletion.first});
      return;
    }
  }
  engine_.Execute("DELETE FROM deletion WHERE code = ?", {deletion.first});
  engine_.Execute(
      "DELETE FROM group_audience WHERE group_code NOT IN (SELECT code FROM plan_group)"
      " AND group_code NOT IN (SELECT code FROM kept_plan_group)");
}

// The content of plans stays in its place when they are deleted, and goes with their kept rows.
int CKeptDeletions::ForgetSome(const char* table, int32_t deletion, int most) {
  const QString some =
      QStringLiteral("(SELECT code FROM %1 WHERE deletion = ? ORDER BY code LIMIT ?)").arg(QLatin1String(table));
  if (table == kKeptPlans) {
    engine_.Execute("DELETE FROM plan_content WHERE code NOT IN (SELECT code FROM plan) AND code IN " + some,
                    {deletion, most});
  }
  return engine_.Execute(
      QStringLiteral("DELETE FROM %1 WHERE deletion = ? AND code IN ").arg(QLatin1String(table)) + some,
      {deletion, deletion, most});
}

void CKeptDeletions::ForgetRows(int32_t deletion) {
  for (const char* table : kKeptTables) {
    engine_.Execute(QStringLiteral("DELETE FROM %1 WHERE deletion = ?").arg(QLatin1String(table)), {deletion});
  }
  engine_.Execute("DELETE FROM deletion WHERE code = ?", {deletion});
}

}  // namespace TarnHost::Store
