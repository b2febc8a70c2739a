#include "store/user_roles.h"

#include "store/postgres_script.h"

namespace TarnHost::Store {
namespace {

constexpr int kLongestRoleName = 63;  // in bytes; a server cuts off what is longer
const char kDeskRole[] = "desk_role";

// As a statement has it. What a server makes of a backslash depends on a setting; no name or verifier needs one.
QString Literal(const QString& text) {
  QString quoted = text;
  quoted.replace('\'', QLatin1String("''"));
  return '\'' + quoted + '\'';
}

}  // namespace

QString CUserRoles::DeskRole() {
  return engine_.Value("SELECT value FROM store_info WHERE name = ?", {kDeskRole}).toString();
}

bool CUserRoles::AreUsed() {
  return !DeskRole().isEmpty();
}

bool CUserRoles::Exists(const QString& role) {
  return engine_.Value("SELECT 1 FROM pg_roles WHERE rolname = ?", {role}).isValid();
}

bool CUserRoles::IsOrdinary(const QString& role) {
  return engine_
      .Value(
          "SELECT 1 FROM pg_roles WHERE rolname = ? AND NOT rolsuper AND NOT rolbypassrls AND NOT rolcreaterole"
          " AND NOT pg_has_role(oid, (SELECT relowner FROM pg_class WHERE oid = to_regclass('store_info')), 'MEMBER')",
          {role})
      .isValid();
}

bool CUserRoles::IsMember(const QString& role) {
  return engine_
      .Value(
          "SELECT 1 FROM pg_auth_members JOIN pg_roles desk ON desk.oid = roleid JOIN pg_roles login ON login.oid ="
          " member WHERE desk.rolname = ? AND login.rolname = ?",
          {DeskRole(), role})
      .isValid();
}

bool CUserRoles::IsMemberElsewhere(const QString& role) {
  return engine_
      .Value(
          "SELECT 1 FROM pg_auth_members JOIN pg_roles other ON other.oid = roleid JOIN pg_roles login ON login.oid ="
          " member WHERE other.rolname <> ? AND login.rolname = ?",
          {DeskRole(), role})
      .isValid();
}

void CUserRoles::RequireName(const QString& role) const {
  const bool is_kept_back = role.startsWith(QLatin1String("pg_")) || role == "public" || role == "none";
  if (is_kept_back || role.toUtf8().size() > kLongestRoleName) {
    throw CStoreError(
        CStoreError::kRefused,
        {QT_TRANSLATE_NOOP(
             "TarnHost::Store",
             "No role of a server can be called \"%1\": its name is too long (%2 bytes at most) or kept for"
             " the server itself."),
         {role, QString::number(kLongestRoleName)}});
  }
}

// A failure ends a server's transaction, so it must not come to that.
void CUserRoles::Run(const QString& statement, const QString& instead) {
  try {
    engine_.RunOnce(statement);
  } catch (const CStoreError& error) {
    if (error.GetKind() != CStoreError::kNoRight) {
      throw;
    }
    throw CStoreError(CStoreError::kNoRight,
                      {QT_TRANSLATE_NOOP("TarnHost::Store",
                                         "The owner of the plan store %1 may not do that with roles (CREATEROLE). The"
                                         " database's administrator can: %2"),
                       {engine_.Place(), instead}},
                      error.Words());
  }
}

QStringList CUserRoles::Use() {
  if (!AreUsed()) {
    const QString station = engine_.Value("SELECT value FROM store_info WHERE name = 'station_id'").toString();
    const QString desk = "tarn_desk_" + QString(station).remove('-');
    if (!Exists(desk)) {
      const QString make = QStringLiteral("CREATE ROLE %1 NOLOGIN").arg(QuotedName(desk));
      Run(make, make);
    }
    engine_.Execute("INSERT INTO store_info (name, value) VALUES (?, ?)", {kDeskRole, desk});
  }
  Grant();
  return MakeMissing();
}

bool CUserRoles::MayMake() {
  return engine_.Value("SELECT 1 FROM pg_roles WHERE rolname = session_user AND rolcreaterole").isValid();
}

// A name that no role can have keeps the others from nothing.
QStringList CUserRoles::MakeMissing() {
  QStringList made;
  if (!AreUsed() || !MayMake()) {
    return made;
  }
  for (const QString& role : Missing()) {
    const bool is_new = !Exists(role);
    try {
      Make(role);
    } catch (const CStoreError& error) {
      if (error.GetKind() != CStoreError::kRefused) {
        throw;
      }
      continue;
    }
    if (is_new) {
      made.append(role);
    }
  }
  return made;
}

void CUserRoles::RenewGrants() {
  if (AreUsed() && Exists(DeskRole())) {
    Grant();
  }
}

// A role that can make objects beside the store's own could have them found in their place.
void CUserRoles::Grant() {
  const QString schema = CurrentSchema(engine_);
  engine_.RunOnce(PostgresScript("postgres_grants.sql", {{"schema", schema}, {"desk", QuotedName(DeskRole())}}));
  const bool is_open =
      engine_.Value("SELECT has_schema_privilege(?, current_schema(), 'CREATE')", {DeskRole()}).toBool();
  if (is_open) {
    throw CStoreError(CStoreError::kRefused,
                      {QT_TRANSLATE_NOOP("TarnHost::Store",
                                         "Everybody may make objects in the schema of the plan store %1, so rights"
                                         " cannot hold there. The database's administrator can mend it: %2"),
                       {engine_.Place(), QStringLiteral("REVOKE CREATE ON SCHEMA %1 FROM PUBLIC").arg(schema)}});
  }
}

void CUserRoles::Make(const QString& role) {
  if (!AreUsed()) {
    return;
  }
  RequireName(role);
  if (!MayMake()) {
    return;
  }
  if (!Exists(role)) {
    const QString make = QStringLiteral("CREATE ROLE %1 LOGIN").arg(QuotedName(role));
    Run(make, make);
  } else if (!IsOrdinary(role)) {
    throw CStoreError(
        CStoreError::kRefused,
        {QT_TRANSLATE_NOOP("TarnHost::Store",
                           "Role \"%1\" of the server may do more than a user should: it owns the store, or"
                           " manages the server. Choose another name."),
         {role}});
  }
  MakeMember(role);
}

void CUserRoles::MakeMember(const QString& role) {
  if (IsMember(role)) {
    return;
  }
  const QString grant = QStringLiteral("GRANT %1 TO %2").arg(QuotedName(DeskRole()), QuotedName(role));
  Run(grant, grant);
}

// One that cannot follow stays under its name: the user goes on logging in with that.
QString CUserRoles::Rename(const QString& role, const QString& name) {
  if (role == name || !AreUsed()) {
    return name;
  }
  if (!IsMember(role)) {
    Make(name);
    return name;
  }
  if (!MayMake() || Exists(name)) {
    return role;
  }
  RequireName(name);
  const QString rename = QStringLiteral("ALTER ROLE %1 RENAME TO %2").arg(QuotedName(role), QuotedName(name));
  Run(rename, rename);
  return name;
}

void CUserRoles::SetPassword(const QString& role, const CSecret& password) {
  if (!AreUsed()) {
    return;
  }
  if (password.Reveal().find('\0') != std::string::npos) {
    throw CStoreError(CStoreError::kRefused,
                      QT_TRANSLATE_NOOP("TarnHost::Store", "A password for a server cannot have the character NUL."));
  }
  if (!IsMember(role)) {
    throw CStoreError(
        CStoreError::kRefused,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The server has no role \"%1\" for a user of this store."), {role}});
  }
  QString stored = QStringLiteral("NULL");
  if (!password.IsEmpty()) {
    stored = Literal(QString::fromLatin1(verifier_(role, password)));
  }
  Run(QStringLiteral("ALTER ROLE %1 PASSWORD %2").arg(QuotedName(role), stored),
      QStringLiteral("\\password %1").arg(QuotedName(role)));
}

// One that has something elsewhere in the server stays, and can no longer log in here.
void CUserRoles::Remove(const QString& role) {
  if (!AreUsed() || !MayMake() || !IsMember(role)) {
    return;
  }
  const QString revoke = QStringLiteral("REVOKE %1 FROM %2").arg(QuotedName(DeskRole()), QuotedName(role));
  if (IsMemberElsewhere(role)) {
    return Run(revoke, revoke);  // of another site on this server, say
  }
  engine_.RunOnce("SAVEPOINT role");
  try {
    engine_.RunOnce("DROP ROLE " + QuotedName(role));
  } catch (const CStoreError& error) {
    if (error.IsOfConnection()) {
      throw;
    }
    engine_.RunOnce("ROLLBACK TO SAVEPOINT role");
    Run(revoke, revoke);
  }
  engine_.RunOnce("RELEASE SAVEPOINT role");
}

QStringList CUserRoles::Missing() {
  QStringList missing;
  engine_.ForEach(
      "SELECT role_name FROM app_user WHERE role_name <> '' AND role_name NOT IN (SELECT login.rolname FROM"
      " pg_auth_members JOIN pg_roles desk ON desk.oid = roleid JOIN pg_roles login ON login.oid = member"
      " WHERE desk.rolname = ?) ORDER BY role_name",
      {DeskRole()}, [&missing](const QSqlQuery& query) { missing.append(query.value(0).toString()); });
  return missing;
}

}  // namespace TarnHost::Store
