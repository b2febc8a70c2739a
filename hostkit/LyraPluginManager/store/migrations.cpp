#include "store/migrations.h"

#include <QStringList>
#include <algorithm>

#include "marlog/marlog.h"
#include "store/content_split.h"
#include "store/plan_records.h"
#include "store/pretended_site.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

QStringList FirstLayout(const CSqlEngine& engine) {
  const QString bytes = engine.BytesType();
  return {
      // Numbers that only grow: 'code', the last code given; 'seq', the last change written.
      "CREATE TABLE counter (name TEXT PRIMARY KEY, value BIGINT NOT NULL)",
      "INSERT INTO counter (name, value) VALUES ('code', 100000), ('seq', 0)",
      "CREATE TABLE app_user (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)",
      "CREATE TABLE user_right (user_id INTEGER NOT NULL, code INTEGER NOT NULL, PRIMARY KEY (user_id, code))",
      "CREATE TABLE feature_switch (name TEXT PRIMARY KEY, value INTEGER NOT NULL)",
      "CREATE TABLE region (id INTEGER PRIMARY KEY, parent_id INTEGER NOT NULL, name TEXT NOT NULL)",
      "CREATE TABLE camera (id INTEGER PRIMARY KEY, region_id INTEGER NOT NULL, name TEXT NOT NULL,"
      " online INTEGER NOT NULL)",
      "CREATE TABLE camera_preset (camera_id INTEGER NOT NULL, preset_no INTEGER NOT NULL, name TEXT NOT NULL,"
      " PRIMARY KEY (camera_id, preset_no))",
      "CREATE TABLE camera_stream (camera_id INTEGER NOT NULL, stream_type INTEGER NOT NULL,"
      " PRIMARY KEY (camera_id, stream_type))",
      "CREATE TABLE plan_group (code INTEGER PRIMARY KEY, parent_code INTEGER NOT NULL, family INTEGER NOT NULL,"
      " owner_id INTEGER NOT NULL, name TEXT NOT NULL)",
      "CREATE INDEX plan_group_parent ON plan_group (parent_code, owner_id)",
      "CREATE TABLE plan (code INTEGER PRIMARY KEY, parent_code INTEGER NOT NULL, family INTEGER NOT NULL,"
      " owner_id INTEGER NOT NULL, name TEXT NOT NULL, split_type INTEGER NOT NULL, page_count INTEGER NOT NULL,"
      " auto_run INTEGER NOT NULL, begin_time TEXT NOT NULL, end_time TEXT NOT NULL, pages TEXT NOT NULL,"
      " thumbnail " +
          bytes +
          ", creator TEXT NOT NULL, creation_time TEXT NOT NULL, revision BIGINT NOT NULL,"
          " changed_by TEXT NOT NULL, changed_at TEXT NOT NULL)",
      "CREATE INDEX plan_parent ON plan (parent_code)",
      "CREATE TABLE default_view (user_id INTEGER PRIMARY KEY, code INTEGER NOT NULL, type INTEGER NOT NULL)",
      "CREATE INDEX default_view_code ON default_view (code)",
      "CREATE TABLE plan_log (played_at TEXT NOT NULL, user_id INTEGER NOT NULL, name TEXT NOT NULL,"
      " automatic INTEGER NOT NULL, from_history INTEGER NOT NULL)",
      "CREATE TABLE change_log (seq BIGINT PRIMARY KEY, origin TEXT NOT NULL, kind INTEGER NOT NULL,"
      " code INTEGER NOT NULL)",
  };
}

QStringList FavoriteCameras(const CSqlEngine&) {
  return {
      "CREATE TABLE favorite_camera (user_id INTEGER NOT NULL, camera_id INTEGER NOT NULL,"
      " PRIMARY KEY (user_id, camera_id))"};
}

// Rows of before have none, nor have those that an older program still writes.
QStringList PlanChecksums(const CSqlEngine&) {
  return {"ALTER TABLE plan ADD COLUMN checksum TEXT NOT NULL DEFAULT ''"};
}

// What was deleted stands here for the time in which it can be taken back. The columns are those of the tables it came
// from; 'deletion' is the code of the row that was deleted with all below it.
QStringList KeptDeletions(const CSqlEngine& engine) {
  return {
      "CREATE TABLE deletion (code INTEGER PRIMARY KEY, is_group INTEGER NOT NULL, parent_code INTEGER NOT NULL,"
      " family INTEGER NOT NULL, owner_id INTEGER NOT NULL, name TEXT NOT NULL, namesakes INTEGER NOT NULL,"
      " user_id INTEGER NOT NULL, deleted_at BIGINT NOT NULL)",
      "CREATE TABLE kept_plan_group (deletion INTEGER NOT NULL, code INTEGER PRIMARY KEY,"
      " parent_code INTEGER NOT NULL, family INTEGER NOT NULL, owner_id INTEGER NOT NULL, name TEXT NOT NULL)",
      "CREATE TABLE kept_plan (deletion INTEGER NOT NULL, code INTEGER PRIMARY KEY, parent_code INTEGER NOT NULL,"
      " family INTEGER NOT NULL, owner_id INTEGER NOT NULL, name TEXT NOT NULL, split_type INTEGER NOT NULL,"
      " page_count INTEGER NOT NULL, auto_run INTEGER NOT NULL, begin_time TEXT NOT NULL, end_time TEXT NOT NULL,"
      " pages TEXT NOT NULL, thumbnail " +
          engine.BytesType() +
          ", creator TEXT NOT NULL, creation_time TEXT NOT NULL, revision BIGINT NOT NULL, changed_by TEXT NOT NULL,"
          " changed_at TEXT NOT NULL, checksum TEXT NOT NULL)",
      "CREATE TABLE kept_default_view (deletion INTEGER NOT NULL, user_id INTEGER NOT NULL,"
      " code INTEGER NOT NULL, type INTEGER NOT NULL, PRIMARY KEY (deletion, user_id))",
  };
}

// A group of public plans with a row in 'group_audience' is seen by members of the user groups named there, and by who
// may configure the site (right 8): so far, that is who may do everything.
QStringList GroupAudienceTables(const CSqlEngine&) {
  return {
      "CREATE TABLE user_group (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)",
      "CREATE TABLE user_group_member (user_group_id INTEGER NOT NULL, user_id INTEGER NOT NULL,"
      " PRIMARY KEY (user_group_id, user_id))",
      "CREATE INDEX user_group_member_user ON user_group_member (user_id)",
      "CREATE TABLE group_audience (group_code INTEGER NOT NULL, user_group_id INTEGER NOT NULL,"
      " PRIMARY KEY (group_code, user_group_id))",
      "INSERT INTO user_right (user_id, code) SELECT user_id, 8 FROM user_right WHERE code IN (5, 6, 7)"
      " GROUP BY user_id HAVING count(*) = 3 ON CONFLICT DO NOTHING",
  };
}

QStringList Nothing(const CSqlEngine&) {
  return {};
}

// How pictures come from a camera. User and password stand apart from the rows that trees and lists read, so that a
// server can be made to give them to fewer. 'device_url' is where the camera's own service is asked.
QStringList CameraAccessTables(const CSqlEngine&) {
  return {
      "ALTER TABLE camera_stream ADD COLUMN url TEXT NOT NULL DEFAULT ''",
      "CREATE TABLE camera_access (camera_id INTEGER PRIMARY KEY, login TEXT NOT NULL, secret TEXT NOT NULL,"
      " device_url TEXT NOT NULL)",
      "INSERT INTO counter (name, value) SELECT 'camera', coalesce(max(id), 0) FROM camera",
      "INSERT INTO counter (name, value) SELECT 'region', coalesce(max(id), 0) FROM region",
  };
}

// Plans may still name cameras that were removed past the program; a new one must not appear in their place.
void CountCameras(CSqlEngine& engine) {
  constexpr int32_t kHighestCounted = 1000000000;
  int32_t highest = engine.Value("SELECT value FROM counter WHERE name = 'camera'").toInt();
  engine.ForEach("SELECT code FROM camera_name", {}, [&highest](const QSqlQuery& query) {
    const int32_t code = ParseCode(query.value(0).toString().toStdString());
    if (code <= kHighestCounted) {
      highest = std::max(highest, code);
    }
  });
  engine.Execute("UPDATE counter SET value = ? WHERE name = 'camera'", {highest});
}

// How users log in. On a server each may have a role, whose password the server checks; 'account' has the passwords
// that the store itself checks, and a user without a row there has none. The counter has the last number given to a
// user, or a new one would find what a deleted one has left.
QStringList Accounts(const CSqlEngine&) {
  return {
      "ALTER TABLE app_user ADD COLUMN role_name TEXT NOT NULL DEFAULT ''",
      "UPDATE app_user SET role_name = name",
      "CREATE UNIQUE INDEX app_user_role ON app_user (role_name) WHERE role_name <> ''",
      "CREATE TABLE account (user_id INTEGER PRIMARY KEY, hash TEXT NOT NULL, wrong_tries INTEGER NOT NULL,"
      " locked_at BIGINT NOT NULL)",
      "INSERT INTO counter (name, value) SELECT 'user', coalesce(max(id), 0) FROM app_user",
      "CREATE INDEX plan_log_played_at ON plan_log (played_at)",
  };
}

void MakeRights(CSqlEngine& engine) {
  engine.MakeRights();
  MarkIfPretended(engine);
}

void Apply(CSqlEngine& engine, const Migration& step) {
  for (const QString& statement : step.statements(engine)) {
    engine.RunOnce(statement);
  }
  if (step.work != nullptr) {
    step.work(engine);
  }
  engine.Execute(
      "INSERT INTO store_info (name, value) VALUES ('version', ?)"
      " ON CONFLICT (name) DO UPDATE SET value = excluded.value",
      {QString::number(step.to)});
}

void Log(const CSqlEngine& engine, const char* what, const Migration& step) {
  marlog::Write("LyraClientInfo", marlog::Info, "The plan store %s %s layout %d", qUtf8Printable(engine.Place()), what,
                step.to);
}

void RunStep(CSqlEngine& engine, const Migration& step) {
  CTransaction transaction(engine, CTransaction::kWrite);
  if (StoredVersion(engine) < step.to) {       // otherwise another process was quicker
    Log(engine, "is being brought to", step);  // a large one takes a while
    Apply(engine, step);
    transaction.Commit();
    Log(engine, "has", step);
  }
}

}  // namespace

const std::vector<Migration>& AllMigrations() {
  static const std::vector<Migration> all = {{1, FirstLayout},
                                             {2, FavoriteCameras},
                                             {3, PlanChecksums},
                                             {4, KeptDeletions},
                                             {5, GroupAudienceTables},
                                             {6, Nothing, SplitContentOff},
                                             {7, CameraAccessTables, CountCameras},
                                             {8, Accounts, MakeRights}};
  return all;
}

int StoredVersion(CSqlEngine& engine) {
  return engine.Value("SELECT value FROM store_info WHERE name = 'version'").toString().toInt();
}

// A newer program may have other tables; that it is newer is said elsewhere.
static bool IsPlanStore(CSqlEngine& engine) {
  if (!engine.HasTable("store_info") || StoredVersion(engine) <= 0 ||
      !engine.Value("SELECT value FROM store_info WHERE name = 'station_id'").isValid()) {
    return false;
  }
  bool whole = true;
  for (const char* table : {"counter", "change_log", "app_user", "plan_group", "plan"}) {
    whole = whole && engine.HasTable(table);
  }
  return whole || StoredVersion(engine) > AllMigrations().back().to;
}

void RequirePlanStore(CSqlEngine& engine, const QString& place) {
  bool ours = false;
  try {
    ours = IsPlanStore(engine);
  } catch (const CStoreError& error) {
    if (error.GetKind() != CStoreError::kFailed) {
      throw;
    }  // else a table of this name that has other columns
  }
  if (!ours) {
    throw CStoreError(CStoreError::kRefused, {kNotAPlanStore, {place}});
  }
}

void RequireKnownVersion(int stored, int newest, const QString& place) {
  if (stored > newest) {
    throw CStoreError(CStoreError::kRefused, {kNewerStore, {place, QString::number(stored), QString::number(newest)}});
  }
}

void RequireNewest(CSqlEngine& engine) {
  RequirePlanStore(engine, engine.Place());
  const int version = StoredVersion(engine);
  const int newest = AllMigrations().back().to;
  RequireKnownVersion(version, newest, engine.Place());
  if (version < newest) {
    throw CStoreError(CStoreError::kFailed,
                      QStringLiteral("The plan store %1 is of an older version (%2); start the client on it once.")
                          .arg(engine.Place(), QString::number(version)));
  }
}

void MakeLayout(CSqlEngine& engine, const std::vector<Migration>& migrations) {
  engine.RunOnce("CREATE TABLE store_info (name TEXT PRIMARY KEY, value TEXT NOT NULL)");
  for (const Migration& step : migrations) {
    Apply(engine, step);
  }
}

void Migrate(CSqlEngine& engine, const QString& place, const std::vector<Migration>& migrations) {
  const int newest = migrations.back().to;
  const int stored = StoredVersion(engine);
  RequireKnownVersion(stored, newest, place);
  for (const Migration& step : migrations) {
    if (step.to > stored) {
      RunStep(engine, step);
    }
  }
}

}  // namespace TarnHost::Store
