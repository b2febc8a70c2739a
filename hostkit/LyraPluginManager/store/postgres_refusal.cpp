#include "store/postgres_refusal.h"

#include <libpq-fe.h>
#include <poll.h>

#include <QHash>
#include <QRegularExpression>
#include <QVector>
#include <chrono>
#include <memory>

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(5);

using Connection = std::unique_ptr<PGconn, decltype(&PQfinish)>;

Connection Begin(const PostgresAddress& address) {
  const QVector<QPair<const char*, QByteArray>> settings = {
      {"user", address.user.toUtf8()},
      {"password", address.password.toUtf8()},
      {"host", address.Hosts().toUtf8()},
      {"port", address.Ports().toUtf8()},
      {"target_session_attrs", address.SessionKind().toUtf8()},
      {"dbname", address.database.toUtf8()},
      {"sslmode", address.ssl_mode.toUtf8()},
      {"sslrootcert", address.ssl_root_cert.toUtf8()},
  };
  QVector<const char*> names, values;
  for (const auto& setting : settings) {
    names.append(setting.first);
    values.append(setting.second.constData());  // an empty one counts as not set
  }
  names.append(nullptr);
  values.append(nullptr);
  return Connection(PQconnectStartParams(names.constData(), values.constData(), 0), &PQfinish);
}

bool IsReached(const PGconn* connection) {
  const ConnStatusType status = PQstatus(connection);
  return status != CONNECTION_BAD && status != CONNECTION_STARTED;
}

// Waits until the connection can go on; false when its time is over.
bool Await(const PGconn* connection, PostgresPollingStatusType state, steady_clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - steady_clock::now()).count();
  pollfd socket{PQsocket(connection), short(state == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
  return left > 0 && poll(&socket, 1, static_cast<int>(left)) > 0;
}

QString Quoted(const char* name) {
  return '"' + QString::fromUtf8(name) + '"';
}

// The code stands before the server's own words: "FATAL:  28P01: password authentication failed".
QString CodeIn(const QString& words) {
  static const QRegularExpression code(QStringLiteral(":\\s+(?=[A-Z]*[0-9])([0-9A-Z]{5}):\\s"));
  return code.match(words).captured(1);
}

CStoreText ReasonByCode(const QString& code, const PGconn* connection) {
  const QString user = Quoted(PQuser(connection)), database = Quoted(PQdb(connection));
  const QHash<QString, CStoreText> reasons = {
      {"28P01", {QT_TRANSLATE_NOOP("TarnHost::Store", "user %1 is unknown or has another password"), {user}}},
      {"28000", {QT_TRANSLATE_NOOP("TarnHost::Store", "user %1 is unknown or may not log in from here"), {user}}},
      {"3D000", {QT_TRANSLATE_NOOP("TarnHost::Store", "there is no database %1"), {database}}},
      {"42501", {QT_TRANSLATE_NOOP("TarnHost::Store", "user %1 has no right to use database %2"), {user, database}}},
      {"55000", {QT_TRANSLATE_NOOP("TarnHost::Store", "database %1 takes no connections"), {database}}},
      {"53300", QT_TRANSLATE_NOOP("TarnHost::Store", "the server takes no more connections")},
      {"57P03", QT_TRANSLATE_NOOP("TarnHost::Store", "the server is starting or ending")},
  };
  return reasons.value(code);
}

// A wrong password has a code of its own, unless a directory was asked for it.
bool IsOfAccount(const PGconn* connection) {
  const QString code = CodeIn(QString::fromUtf8(PQerrorMessage(connection)));
  return code == "28P01" || code == "28000" || PQconnectionNeedsPassword(connection) != 0;
}

CStoreText ReasonFor(PGconn* connection, const PostgresAddress& address, bool is_reached) {
  const QString words = QString::fromUtf8(PQerrorMessage(connection));
  const CStoreText by_code = ReasonByCode(CodeIn(words), connection);
  if (!by_code.IsEmpty()) {
    return by_code;
  }
  if (PQconnectionNeedsPassword(connection) != 0) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "a password is needed for user %1"), {Quoted(PQuser(connection))}};
  }
  if (!is_reached) {
    return ReasonOfSilence(address);
  }
  if (words.contains(QLatin1String("session is read-only"))) {
    return QT_TRANSLATE_NOOP("TarnHost::Store", "none of the servers takes changes at present");
  }
  return words.section(QStringLiteral("\nLOCATION:"), 0, 0).simplified();
}

}  // namespace

PostgresAttempt TryToConnect(const PostgresAddress& address, std::chrono::milliseconds patience) {
  const Connection connection = Begin(address);
  const auto end = steady_clock::now() + patience;
  bool is_reached = false;
  if (!connection) {
    return {false, false, ReasonOfSilence(address)};
  }
  PQsetErrorVerbosity(connection.get(), PQERRORS_VERBOSE);
  PostgresPollingStatusType state = PGRES_POLLING_WRITING;
  while (state == PGRES_POLLING_READING || state == PGRES_POLLING_WRITING) {
    if (!Await(connection.get(), state, end)) {
      return {false, false, ReasonOfSilence(address)};
    }
    state = PQconnectPoll(connection.get());
    is_reached = is_reached || IsReached(connection.get());
  }
  if (state == PGRES_POLLING_OK) {
    return {true, false, {}};
  }
  return {false, IsOfAccount(connection.get()), ReasonFor(connection.get(), address, is_reached)};
}

PostgresAttempt LookWhyRefused(const PostgresAddress& address) {
  PostgresAttempt attempt = TryToConnect(address, kPatience);
  if (attempt.lets_in) {
    attempt.reason = QT_TRANSLATE_NOOP("TarnHost::Store", "the server was out of reach for a moment");
  }
  return attempt;
}

CStoreText ReasonOfSilence(const PostgresAddress& address) {
  if (address.servers.size() > 1) {
    return {QT_TRANSLATE_NOOP("TarnHost::Store", "no server answers at any of %1"), {address.Hosts()}};
  }
  const PostgresAddress::Server& server = address.servers.front();
  CStoreText host = server.host;
  if (host.IsEmpty()) {
    host = QT_TRANSLATE_NOOP("TarnHost::Store", "this machine");
  }
  return {QT_TRANSLATE_NOOP("TarnHost::Store", "no server answers at %1:%2"), {host, QString::number(server.port)}};
}

}  // namespace TarnHost::Store
