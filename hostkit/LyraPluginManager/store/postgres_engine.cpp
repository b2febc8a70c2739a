#include "store/postgres_engine.h"

#include <libpq-fe.h>

#include <QSqlDriver>
#include <chrono>

#include "store/migrations.h"
#include "store/postgres_refusal.h"
#include "store/store_opener.h"

namespace TarnHost::Store {
namespace {

// Any number will do that is no other program's.
constexpr int kWriterLock = 0x5461726e;
constexpr auto kConnectTimeout = std::chrono::seconds(5);
const char kSessionEnded[] = "25P03";  // it was idle in a transaction for too long

// As the driver's options have it.
QString Option(const char* name, QString value) {
  value.replace('\\', QLatin1String("\\\\")).replace('\'', QLatin1String("\\'"));
  return value.isEmpty() ? QString() : QStringLiteral(";%1='%2'").arg(QLatin1String(name), value);
}

int SocketOf(const QSqlDatabase& database) {
  const QVariant handle = database.driver()->handle();
  const bool known = qstrcmp(handle.typeName(), "PGconn*") == 0;
  return known ? PQsocket(*static_cast<PGconn* const*>(handle.constData())) : -1;
}

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

CPostgresEngine::CPostgresEngine(const PostgresAddress& address)
    : CSqlEngine(QStringLiteral("QPSQL"), address.Place()), address_(address) {}

void CPostgresEngine::Configure(QSqlDatabase* database) const {
  database->setHostName(address_.host);
  database->setPort(address_.port);
  database->setUserName(address_.user);
  database->setPassword(address_.password);
  database->setDatabaseName(address_.database);
  // A cut line is noticed in seconds, not after the network's own patience of minutes.
  database->setConnectOptions(
      QStringLiteral("connect_timeout=%1;tcp_user_timeout=10000;keepalives_idle=5;keepalives_interval=3;"
                     "keepalives_count=2")
          .arg(kConnectTimeout.count()) +
      Option("sslmode", address_.ssl_mode) + Option("sslrootcert", address_.ssl_root_cert));
}

void CPostgresEngine::Connect() {
  const auto begin = std::chrono::steady_clock::now();
  try {
    OpenDatabase();
  } catch (const CStoreError& error) {
    const bool was_silent = std::chrono::steady_clock::now() - begin >= kConnectTimeout;
    const CStoreText reason = was_silent ? ReasonOfSilence(address_) : ReasonOfRefusal(address_);
    throw CStoreError(
        CStoreError::kConnectionLost,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 cannot be opened: %2."), {place_, reason}},
        error.Words());
  }
}

void CPostgresEngine::Open() {
  Connect();
  WatchSocket(SocketOf(database_));
  RunOnce(QStringLiteral("SET client_min_messages = warning"));
  RunOnce(QStringLiteral("SET synchronous_commit = on"));
  SetPatience(patience_);
  LimitAbsence();
}

// Where the store was, something else may stand by now.
void CPostgresEngine::Reopen() {
  Close();
  Open();
  try {
    RequirePlanStore(*this, place_);
    Migrate(*this, place_);
  } catch (...) {
    Close();  // nothing is written there
    throw;
  }
}

// What a desk that vanishes in mid-write holds, the turn to write above all, must not stay with it: by the server's own
// settings it would for hours. The last setting is missing on older servers.
void CPostgresEngine::LimitAbsence() {
  RunOnce(QStringLiteral("SET idle_in_transaction_session_timeout = 15000"));
  RunOnce(QStringLiteral("SET tcp_keepalives_idle = 5"));
  RunOnce(QStringLiteral("SET tcp_keepalives_interval = 5"));
  RunOnce(QStringLiteral("SET tcp_keepalives_count = 2"));
  RunOnce(QStringLiteral("SELECT set_config(name, '15000', false) FROM pg_settings WHERE name = 'tcp_user_timeout'"));
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
  RunOnce(QStringLiteral("BEGIN"));
  try {
    RunOnce(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(kWriterLock));
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
  if (state == "42501") {
    return CStoreError::kNoRight;
  }
  if (state == "25006") {
    return CStoreError::kReadOnly;
  }
  return state.startsWith("54") ? CStoreError::kTooLarge : CStoreError::kFailed;
}

std::unique_ptr<CSqlEngine> OpenPostgresStore(const PostgresAddress& address, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch) {
  auto engine = std::make_unique<CPostgresEngine>(address);
  engine->SetWatch(std::move(watch));
  engine->Open();
  if (!engine->HasTable("store_info")) {
    MakeTables(*engine, [&] { FillNewStore(*engine, fresh); });
  }
  RequirePlanStore(*engine, engine->Place());
  MakeTables(*engine, [&] { Migrate(*engine, engine->Place()); });
  return engine;
}

}  // namespace TarnHost::Store
