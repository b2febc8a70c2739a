#include "older_store.h"

namespace StoreTest {
namespace {

QStringList WithContentInTheRows(const char* table, const char* first_column, const char* first_definition) {
  const QString bytes = CStoreFixture::OnPostgres() ? "BYTEA" : "BLOB";
  const QString light = QString(first_column) +
                        "code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time,"
                        " end_time, creator, creation_time, revision, changed_by, changed_at, checksum";
  return {
      QString("ALTER TABLE %1 RENAME TO light").arg(table),
      CStoreFixture::OnPostgres() ? QString("ALTER INDEX %1_pkey RENAME TO light_pkey").arg(table) : "SELECT 1",
      QString("CREATE TABLE %1 (%2code INTEGER PRIMARY KEY, parent_code INTEGER NOT NULL, family INTEGER NOT NULL,"
              " owner_id INTEGER NOT NULL, name TEXT NOT NULL, split_type INTEGER NOT NULL,"
              " page_count INTEGER NOT NULL, auto_run INTEGER NOT NULL, begin_time TEXT NOT NULL,"
              " end_time TEXT NOT NULL, pages TEXT NOT NULL, thumbnail %3, creator TEXT NOT NULL,"
              " creation_time TEXT NOT NULL, revision BIGINT NOT NULL, changed_by TEXT NOT NULL,"
              " changed_at TEXT NOT NULL, checksum TEXT NOT NULL DEFAULT '')")
          .arg(table, first_definition, bytes),
      QString("INSERT INTO %1 (%2, pages, thumbnail) SELECT %2, pages, thumbnail FROM light"
              " JOIN (SELECT code AS content_code, pages, thumbnail FROM plan_content) content ON content_code = code")
          .arg(table, light),
      "DROP TABLE light"};
}

QStringList WithoutRights() {
  if (!CStoreFixture::OnPostgres()) {
    return {};
  }
  return {"SET client_min_messages = warning",
          "DO $$ DECLARE one record; BEGIN"
          " FOR one IN SELECT * FROM pg_policies WHERE schemaname = 'public' LOOP"
          " EXECUTE format('DROP POLICY %I ON %I', one.policyname, one.tablename); END LOOP;"
          " FOR one IN SELECT * FROM pg_tables WHERE schemaname = 'public' LOOP"
          " EXECUTE format('ALTER TABLE %I DISABLE ROW LEVEL SECURITY', one.tablename); END LOOP;"
          " FOR one IN SELECT oid::regprocedure AS name FROM pg_proc WHERE starts_with(proname, 'tarn_') LOOP"
          " EXECUTE format('DROP FUNCTION %s CASCADE', one.name); END LOOP; END $$",
          "ALTER TABLE deletion DROP COLUMN noted_at", "DROP TABLE camera_claim"};
}

// Undoes the step to this version.
QStringList Undo(int version) {
  switch (version) {
    case 2:
      return {"DROP TABLE favorite_camera"};
    case 3:
      return {"ALTER TABLE plan DROP COLUMN checksum"};
    case 4:
      return {"DROP TABLE deletion", "DROP TABLE kept_plan_group", "DROP TABLE kept_plan",
              "DROP TABLE kept_default_view"};
    case 5:
      return {"DROP TABLE user_group", "DROP TABLE user_group_member", "DROP TABLE group_audience",
              "DELETE FROM user_right WHERE code = 8"};
    case 6:
      return QStringList("DROP INDEX plan_parent") + WithContentInTheRows("plan", "", "") +
             WithContentInTheRows("kept_plan", "deletion, ", "deletion INTEGER NOT NULL, ") +
             QStringList{"CREATE INDEX plan_parent ON plan (parent_code)", "DROP TABLE plan_content",
                         "DROP TABLE camera_name"};
    case 7:
      return {"ALTER TABLE camera_stream DROP COLUMN url", "DROP TABLE camera_access",
              "DELETE FROM counter WHERE name IN ('camera', 'region')"};
    case 8:
      return WithoutRights() +
             QStringList{"DROP TABLE account", "DROP INDEX app_user_role", "DROP INDEX plan_log_played_at",
                         "ALTER TABLE app_user DROP COLUMN role_name", "DELETE FROM counter WHERE name = 'user'"};
  }
  qFatal("there is no step to version %d", version);
}

}  // namespace

void SetBack(const CStoreFixture& fixture, int version) {
  const CDirectAccess access(fixture.Url());
  for (int step = TarnHost::CPlanStore::LayoutVersion(); step > version; --step) {
    for (const QString& statement : Undo(step)) {
      access.Run(statement);
    }
  }
  access.Run(QString("UPDATE store_info SET value = '%1' WHERE name = 'version'").arg(version));
}

}  // namespace StoreTest
