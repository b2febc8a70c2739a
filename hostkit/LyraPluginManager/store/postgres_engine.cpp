#include "store/postgres_engine.h"

#include <libpq-fe.h>

#include <QSqlDriver>

#include "store/migrations.h"
#include "store/store_opener.h"

namespace TarnHost::Store {
namespace {

constexpr int kPatience = 5000;  // ms
// Any number will do that is no other program's.
constexpr int kWriterLock = 0x5461726e;
constexpr int kDefaultPort = 5432;
const char kSessionEnded[] = "25P03";  // it was idle in a transaction for too long

// The store as messages name it: without the password.
QString PlaceOf(const QUrl& url) {
  return url.toString(QUrl::RemovePassword | QUrl::RemoveQuery);
}

int SocketOf(const QSqlDatabase& database) {
  const QVariant handle = database.driver()->handle();
  const bool known = qstrcmp(handle.typeName(), "PGconn*") == 0;
  return known ? PQsocket(*static_cast<PGconn* const*>(handle.constData())) : -1;
}

}  // namespace

CPostgresEngine::CPostgresEngine(const QUrl& url) : CSqlEngine(QStringLiteral("QPSQL"), PlaceOf(url)), url_(url) {}

void CPostgresEngine::Configure(QSqlDatabase* database) const {
  database->setHostName(url_.host());
  database->setPort(url_.port(kDefaultPort));
  database->setUserName(url_.userName(QUrl::FullyDecoded));
  database->setPassword(url_.password(QUrl::FullyDecoded));
  database->setDatabaseName(url_.path(QUrl::FullyDecoded).mid(1));
  // A cut line is noticed in seconds, not after the network's own patience of minutes.
  database->setConnectOptions(
      QStringLiteral("connect_timeout=5;tcp_user_timeout=10000;keepalives_idle=5;keepalives_interval=3;"
                     "keepalives_count=2"));
}

void CPostgresEngine::Open() {
  OpenDatabase();
  WatchSocket(SocketOf(database_));
  RunOnce(QStringLiteral("SET client_min_messages = warning"));
  RunOnce(QStringLiteral("SET synchronous_commit = on"));
  SetPatience(kPatience);
  LimitAbsence();
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
  RunOnce(QStringLiteral("SET lock_timeout = %1").arg(milliseconds));
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
bool CPostgresEngine::IsFilled() {
  return Value("SELECT 1 FROM pg_tables WHERE schemaname = current_schema() AND tablename = 'store_info'").isValid();
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
  return state == "25006" || state == "42501" ? CStoreError::kReadOnly : CStoreError::kFailed;
}

std::unique_ptr<CSqlEngine> OpenPostgresStore(const QUrl& url, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch) {
  auto engine = std::make_unique<CPostgresEngine>(url);
  engine->SetWatch(std::move(watch));
  const QString place = PlaceOf(url);
  try {
    engine->Open();
  } catch (const CStoreError&) {
    throw CStoreError(QStringLiteral("The plan store %1 cannot be reached.").arg(place), CStoreError::kConnectionLost);
  }
  if (!engine->IsFilled()) {
    FillNewStore(*engine, fresh);
  }
  Migrate(*engine, place);
  return engine;
}

}  // namespace TarnHost::Store
