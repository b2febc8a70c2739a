#include "store/postgres_engine.h"

#include <libpq-fe.h>

#include <QSqlDriver>
#include <chrono>

#include "store/migrations.h"
#include "store/postgres_refusal.h"
#include "store/postgres_rights.h"
#include "store/store_functions.h"
#include "store/store_opener.h"
#include "store/user_roles.h"

namespace TarnHost::Store {
namespace {

// Any number will do that is no other program's.
constexpr int kWriterLock = 0x5461726e;
constexpr auto kConnectTimeout = std::chrono::seconds(5);
// For an announcement that was lost on its way, which no server promises not to do in a crash.
constexpr auto kBetweenLooksInVain = std::chrono::seconds(5);
const char kUnknownObject[] = "42704";  // a role, too, that was dropped while somebody is logged in under it
const char kSessionEnded[] = "25P03";   // it was idle in a transaction for too long

const char kCannotOpen[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 cannot be opened: %2.");

// As the driver's options have it.
QString Option(const char* name, QString value) {
  value.replace('\\', QLatin1String("\\\\")).replace('\'', QLatin1String("\\'"));
  return value.isEmpty() ? QString() : QStringLiteral(";%1='%2'").arg(QLatin1String(name), value);
}

// Null for one that is not open.
PGconn* HandleOf(const QSqlDatabase& database) {
  if (!database.isOpen()) {
    return nullptr;
  }
  const QVariant handle = database.driver()->handle();
  // By its own name or, since Qt 6, by that of its struct.
  const bool known = qstrcmp(handle.typeName(), "PGconn*") == 0 || qstrcmp(handle.typeName(), "pg_conn*") == 0;
  return known ? *static_cast<PGconn* const*>(handle.constData()) : nullptr;
}

int SocketOf(const QSqlDatabase& database) {
  PGconn* const handle = HandleOf(database);
  return handle != nullptr ? PQsocket(handle) : -1;
}

// Of a session; in one statement, since who connects may be waited for. What a desk that vanishes in mid-write holds,
// the turn to write above all, must not stay with it: by the server's own settings it would for hours. The last setting
// is missing on older servers.
const char kSettings[] =
    "SET client_min_messages = warning; SET synchronous_commit = on; SET idle_in_transaction_session_timeout = 15000;"
    " SET tcp_keepalives_idle = 5; SET tcp_keepalives_interval = 5; SET tcp_keepalives_count = 2;"
    " SELECT set_config(name, '15000', false) FROM pg_settings WHERE name = 'tcp_user_timeout'";

template <class Work>
void MakeTables(CSqlEngine& engine, const Work& work) {
  try {
    work();
  } catch (const CStoreError& error) {
    if (error.GetKind() != CStoreError::kNoRight) {
      throw;
    }
    const QString user = engine.Value("SELECT current_user").toString();
    throw CStoreError(CStoreError::kNoRight,
                      QStringLiteral("The plan store %1 cannot be opened: user \"%2\" has no right to create tables.")
                          .arg(engine.Place(), user),
                      error.Words());
  }
}

}  // namespace

CPostgresEngine::CPostgresEngine(const PostgresAddress& address, Use use)
    : CSqlEngine(QStringLiteral("QPSQL"), address.Place()),
      address_(address),
      use_(use),
      roles_(std::make_unique<CUserRoles>(
          *this, [this](const QString& role, const CSecret& password) { return Verifier(role, password); })) {}

CPostgresEngine::~CPostgresEngine() = default;

void CPostgresEngine::Configure(QSqlDatabase* database) const {
  database->setHostName(address_.Hosts());
  database->setUserName(address_.user);
  database->setPassword(address_.password);
  database->setDatabaseName(address_.database);
  // A cut line is noticed in seconds, not after the network's own patience of minutes.
  database->setConnectOptions(
      QStringLiteral("connect_timeout=%1;tcp_user_timeout=10000;keepalives_idle=5;keepalives_interval=3;"
                     "keepalives_count=2")
          .arg(kConnectTimeout.count()) +
      Option("port", address_.Ports()) + Option("target_session_attrs", address_.SessionKind()) +
      Option("sslmode", address_.ssl_mode) + Option("sslrootcert", address_.ssl_root_cert));
}

void CPostgresEngine::Connect() {
  const auto begin = std::chrono::steady_clock::now();
  try {
    OpenDatabase();
  } catch (const CStoreError& error) {
    const bool was_silent = std::chrono::steady_clock::now() - begin >= kConnectTimeout;
    const PostgresAttempt again =
        was_silent ? PostgresAttempt{false, false, ReasonOfSilence(address_)} : LookWhyRefused(address_);
    CStoreError failure(CStoreError::kConnectionLost, {kCannotOpen, {place_, again.reason}}, error.Words());
    if (was_silent) {
      failure.MarkSilence();
    }
    if (again.refuses_account) {
      failure.MarkRefusedAccount();
    }
    throw failure;
  }
}

void CPostgresEngine::Open() {
  Connect();
  WatchSocket(SocketOf(database_));
  RunOnce(QLatin1String(kSettings));
  SetPatience(patience_);
  TakeRole();
  if (use_ == kFollowsChanges) {
    Listen();
  }
}

void CPostgresEngine::TakeRole() {
  const PostgresRole role = PostgresRole::Of(*this);
  const auto refuse = [&](const char* reason) {
    throw CStoreError(CStoreError::kRefused, {kCannotOpen, {place_, CStoreText(reason, {role.name})}});
  };
  if (role.passes_rights) {
    refuse(
        QT_TRANSLATE_NOOP("TarnHost::Store",
                          "role \"%1\" passes all rights of a database (SUPERUSER or BYPASSRLS); a store is opened by"
                          " the owner of its tables or by a user"));
  }
  if (role.meets_functions && !role.owns_tables && !role.user) {
    refuse(QT_TRANSLATE_NOOP("TarnHost::Store", "role \"%1\" is no user of this site"));
  }
  bound_user_ = role.owns_tables ? std::nullopt : role.user;
  functions_ = role.meets_functions ? std::make_unique<CStoreFunctions>(*this) : nullptr;
}

void CPostgresEngine::MakeRights() {
  MakePostgresRights(*this);
}

QByteArray CPostgresEngine::Verifier(const QString& role, const CSecret& password) const {
  const std::unique_ptr<char, decltype(&PQfreemem)> made(
      PQencryptPasswordConn(HandleOf(database_), password.Reveal().c_str(), role.toUtf8().constData(), "scram-sha-256"),
      &PQfreemem);
  if (!made) {
    Fail(QSqlError());
  }
  return made.get();
}

// A standby, which cannot be written to, does not offer it: there every look is one at the log.
void CPostgresEngine::Listen() {
  listens_ = has_news_ = false;
  next_look_ = {};  // at what was announced before
  try {
    RunOnce(QStringLiteral("LISTEN tarn_changes"));
    listens_ = true;
  } catch (const CStoreError& error) {
    if (error.IsOfConnection()) {
      throw;
    }
  }
}

// Where the log is written by a function, that does it.
void CPostgresEngine::Announce() {
  if (functions_) {
    return;
  }
  RunOnce(QStringLiteral("NOTIFY tarn_changes"));
}

int CPostgresEngine::NewsSocket() const {
  return listens_ ? SocketOf(database_) : -1;
}

// Of what came along with the answers to statements no socket tells. The session hears of its own changes, too.
bool CPostgresEngine::HasNews() {
  PGconn* const handle = HandleOf(database_);
  while (PGnotify* const notice = handle != nullptr ? PQnotifies(handle) : nullptr) {
    has_news_ = has_news_ || notice->be_pid != PQbackendPID(handle);
    PQfreemem(notice);
  }
  return has_news_;
}

void CPostgresEngine::TakeNews() {
  PGconn* const handle = HandleOf(database_);
  if (handle == nullptr || PQconsumeInput(handle) == 0) {
    Fail(QSqlError());
  }
  HasNews();
}

bool CPostgresEngine::MayHaveChanged() {
  TakeNews();
  const auto now = std::chrono::steady_clock::now();
  if (listens_ && !has_news_ && now < next_look_) {
    AskForASignOfLife();
    return false;
  }
  has_news_ = false;
  next_look_ = now + kBetweenLooksInVain;
  return true;
}

// An empty statement, which costs the server least.
void CPostgresEngine::AskForASignOfLife() {
  const CConnectionWatch::CWait wait(Watch());
  PGresult* const answer = PQexec(HandleOf(database_), "");
  const bool lives = PQresultStatus(answer) == PGRES_EMPTY_QUERY;
  PQclear(answer);
  if (!lives) {
    Fail(QSqlError());
  }
}

// Where the store was, something else may stand by now.
void CPostgresEngine::Reopen() {
  Close();
  try {
    Open();
    RequirePlanStore(*this, place_);
    if (before_changes_) {
      before_changes_();
    }
    Migrate(*this, place_);
    TakeRole();
  } catch (...) {
    Close();  // nothing is written there, nor under a role that was refused
    throw;
  }
}

void CPostgresEngine::SetPatience(int milliseconds) {
  patience_ = milliseconds;
  if (database_.isOpen()) {
    RunOnce(QStringLiteral("SET lock_timeout = %1").arg(milliseconds));
  }
}

// Writers take turns: the numbers in the change log would otherwise not follow the order of the commits, and a reader
// of the log could miss one.
void CPostgresEngine::BeginWrite() {
  try {
    RunOnce(QStringLiteral("BEGIN; SELECT pg_advisory_xact_lock(%1)").arg(kWriterLock));
  } catch (...) {
    Rollback();
    throw;
  }
}

void CPostgresEngine::BeginRead() {
  RunOnce(QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"));
}

// Asks the table of tables: the server's quicker ways answer from a cache that may miss what was made a moment ago.
bool CPostgresEngine::HasTable(const char* name) {
  return Value("SELECT 1 FROM pg_tables WHERE schemaname = current_schema() AND tablename = ?", {name}).isValid();
}

// What an extension brought along does not count, nor what the server keeps for itself.
bool CPostgresEngine::IsEmpty() {
  return !Value(
              "SELECT 1 FROM pg_class thing JOIN pg_namespace place ON place.oid = thing.relnamespace"
              " WHERE place.nspname NOT LIKE 'pg\\_%' AND place.nspname <> 'information_schema' AND NOT EXISTS"
              " (SELECT 1 FROM pg_depend WHERE classid = 'pg_class'::regclass AND objid = thing.oid AND deptype = 'e')"
              " LIMIT 1")
              .isValid();
}

CStoreError::Kind CPostgresEngine::KindOf(const QSqlError& error) const {
  const QString state = error.nativeErrorCode();
  if (!database_.isOpen() || error.type() == QSqlError::ConnectionError || state.startsWith("08") ||
      state.startsWith("57P") || state == kSessionEnded || state.isEmpty()) {
    return CStoreError::kConnectionLost;
  }
  if (state == "55P03") {
    return CStoreError::kBusy;
  }
  if (state == "53100") {
    return CStoreError::kNoRoom;
  }
  if (state == "42501" || (bound_user_ && state == kUnknownObject)) {
    return CStoreError::kNoRight;
  }
  if (state == "25006") {
    return CStoreError::kReadOnly;
  }
  return state.startsWith("54") ? CStoreError::kTooLarge : CStoreError::kFailed;
}

std::unique_ptr<CSqlEngine> OpenPostgresStore(const PostgresAddress& address, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch) {
  auto engine = std::make_unique<CPostgresEngine>(address, CPostgresEngine::kFollowsChanges);
  engine->SetWatch(std::move(watch));
  engine->Open();
  if (!engine->HasTable("store_info")) {
    MakeTables(*engine, [&] { FillNewStore(*engine, fresh); });
  }
  RequirePlanStore(*engine, engine->Place());
  const int version = StoredVersion(*engine);
  MakeTables(*engine, [&] { Migrate(*engine, engine->Place()); });
  engine->TakeRole();
  if (version < AllMigrations().back().to) {
    engine->Roles()->RenewGrants();
  }
  return engine;
}

}  // namespace TarnHost::Store
