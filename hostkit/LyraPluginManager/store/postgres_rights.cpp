#include "store/postgres_rights.h"

#include "store/postgres_script.h"

namespace TarnHost::Store {

PostgresRole PostgresRole::Of(CSqlEngine& engine) {
  PostgresRole role;
  bool may_ask = false;
  engine.ForEach(
      "SELECT rolname, rolsuper OR rolbypassrls, made.oid IS NOT NULL, coalesce(pg_has_role(proowner, 'USAGE'), false),"
      " coalesce(has_function_privilege(to_regproc('tarn_user'), 'EXECUTE'), false)"
      " FROM pg_roles LEFT JOIN pg_proc made ON made.oid = to_regproc('tarn_log_change') WHERE rolname = session_user",
      {}, [&](const QSqlQuery& query) {
        role.name = query.value(0).toString();
        role.passes_rights = query.value(1).toBool();
        role.meets_functions = query.value(2).toBool();
        role.owns_tables = query.value(3).toBool();
        may_ask = query.value(4).toBool();
      });
  if (may_ask && role.meets_functions && !role.owns_tables) {
    const QVariant user = engine.Value("SELECT tarn_user()");
    if (!user.isNull()) {
      role.user = user.toInt();
    }
  }
  return role;
}

void MakePostgresRights(CSqlEngine& engine) {
  engine.RunOnce(PostgresScript("postgres_rights.sql", {{"schema", CurrentSchema(engine)}}));
}

}  // namespace TarnHost::Store
