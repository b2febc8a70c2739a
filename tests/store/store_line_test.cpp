#include <QTcpServer>
#include <QUrlQuery>
#include <QtTest>
#include <future>
#include <mutex>

#include "TarnHost/log_sink.h"
#include "faulty_line.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

// Said by each write, in this order.
const QByteArray kWriteBegins = "pg_advisory_xact_lock", kWriteEnds = "COMMIT";
constexpr int kAnswerMs = 30000;
constexpr int kLockFreeMs = 20000;  // a desk that vanished may hold the others up so long

/// Runs a call over a line that fails, so that the test can mend it meanwhile.
class CPendingCall {
 public:
  CPendingCall(CFaultyLine& line, std::function<QString()> call)
      : line_(line), answer_(std::async(std::launch::async, std::move(call))) {}
  /// A call whose line stays silent would never end.
  ~CPendingCall() {
    if (answer_.valid()) {
      line_.Cut();
    }
  }

  bool IsAnswered() const { return answer_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }
  QString Answer() {
    return QTest::qWaitFor([this] { return IsAnswered(); }, kAnswerMs) ? answer_.get() : "no answer";
  }

 private:
  CFaultyLine& line_;
  std::future<QString> answer_;
};

/// What is logged while it lives.
class CLogLines {
 public:
  CLogLines() {
    TarnHost::LogSink::SetListener([this](const QString&, int, const QString& line) {
      const std::lock_guard<std::mutex> lock(mutex_);
      lines_ += line + '\n';
    });
  }
  ~CLogLines() { TarnHost::LogSink::SetListener({}); }
  QString Text() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  QString lines_;
};

QUrl With(QUrl url, const QString& user, const QString& password, const QString& database = QString()) {
  url.setUserName(user);
  url.setPassword(password);
  url.setPath(database.isEmpty() ? url.path() : "/" + database);
  return url;
}

quint16 ClosedPort() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return server.serverPort();
}

}  // namespace

/// What becomes of a store when its line or its server fails. Needs PostgreSQL.
class StoreLineTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void OthersSaveAfterADeskVanishedWhileItSaved();
  void AnswersWhatBecameOfAWrite_data();
  void AnswersWhatBecameOfAWrite();
  void SaysWhyItCannotBeOpened_data();
  void SaysWhyItCannotBeOpened();
  void ReportsTroubleWhileItLasts();
  void ReadsWhenItsConnectionsHaveDied();
  void ChecksWhoTheServerIs();
};

void StoreLineTest::OthersSaveAfterADeskVanishedWhileItSaved() {
  CStoreFixture fixture;
  const CClient other(fixture.Open("bob"));
  CFaultyLine line(QUrl(fixture.Url()));
  fixture.options.url = line.Url();
  const CClient vanishing(fixture.Open());
  line.FailAfter({kWriteBegins}, CFaultyLine::kSilent);
  CPendingCall lost(line, [&] { return vanishing.AddPlan("-1", "Never saved"); });
  QTRY_VERIFY(line.HasFailed());
  QElapsedTimer clock;
  clock.start();
  QString error = "not tried";
  while (!error.isEmpty() && clock.elapsed() < 2 * kLockFreeMs) {
    error = CPendingCall(line, [&] { return other.AddPlan("-1", "Saved"); }).Answer();
  }
  QCOMPARE(error, QString());
  QVERIFY2(clock.elapsed() < kLockFreeMs, qPrintable(QString::number(clock.elapsed())));
  // Once the line is there again, so is the desk.
  line.Cut();
  QVERIFY(!lost.Answer().isEmpty());
  line.Mend();
  QTRY_VERIFY_WITH_TIMEOUT(vanishing.Plans("-1") == other.Plans("-1"), kAnswerMs);
  QCOMPARE(other.Plans("-1").filter("aved"), QStringList{"Saved@-1"});
  QCOMPARE(vanishing.AddPlan("-1", "Works again"), QString());
}

void StoreLineTest::AnswersWhatBecameOfAWrite_data() {
  QTest::addColumn<int>("fault");
  QTest::addColumn<QString>("call");
  QTest::addColumn<bool>("mended");
  QTest::addColumn<QString>("wanted");
  const char done[] = "", undone[] = "is lost.", unknown[] = "Look whether it is there before you try again.";
  const auto add = [](const char* name, CFaultyLine::Fault fault, const char* call, const char* wanted,
                      bool mended = true) { QTest::newRow(name) << int(fault) << call << mended << wanted; };
  add("a plan whose answer is lost", CFaultyLine::kCutAnswered, "plan", done);
  add("a group whose answer is lost", CFaultyLine::kCutAnswered, "group", done);
  add("a change whose answer is lost", CFaultyLine::kCutAnswered, "change", done);
  add("a deletion whose answer is lost", CFaultyLine::kCutAnswered, "deletion", done);
  add("a plan that was never committed", CFaultyLine::kCutBefore, "plan", undone);
  add("a change that was never committed", CFaultyLine::kCutBefore, "change", undone);
  add("a plan while the line stays away", CFaultyLine::kCutAnswered, "plan", unknown, false);
}

// Whoever learns that nothing was saved does it again: a change that was saved all the same would be made twice.
void StoreLineTest::AnswersWhatBecameOfAWrite() {
  QFETCH(int, fault);
  QFETCH(QString, call);
  QFETCH(bool, mended);
  QFETCH(QString, wanted);
  const bool is_sure = wanted.isEmpty() || !mended;  // that it is saved
  CStoreFixture fixture;
  const CClient other(fixture.Open("bob"));
  CFaultyLine line(QUrl(fixture.Url()));
  fixture.options.url = line.Url();
  const CClient here(fixture.Open());
  const std::string gate = here.Plan("Gate A");
  auto change = here.Unchanged(gate);
  change.plan_name = "Changed";
  std::string code;
  const QMap<QString, std::function<QString()>> calls = {
      {"plan", [&] { return here.AddPlan("-1", "New", &code); }},
      {"group", [&] { return here.AddGroup("-1", "New", &code); }},
      {"change", [&] { return here.Update(change); }},
      {"deletion", [&] { return here.DeletePlan(gate); }},
  };
  line.FailAfter({kWriteBegins, kWriteEnds}, static_cast<CFaultyLine::Fault>(fault));
  CPendingCall pending(line, calls[call]);
  QTRY_VERIFY(line.HasFailed());
  // A line takes a while to come back; until then it is not known what to answer.
  QVERIFY(!is_sure || !QTest::qWaitFor([&] { return pending.IsAnswered(); }, 500));
  if (mended) {
    line.Mend();
  }
  const QString answer = pending.Answer();
  QVERIFY2(wanted.isEmpty() ? answer.isEmpty() : answer.endsWith(wanted), qPrintable(answer));
  if (!mended) {
    line.Mend();
  }
  QVERIFY(is_sure || QTest::qWaitFor([&] { return calls[call]().isEmpty(); }));
  if (call == "plan" || call == "group") {
    QTRY_COMPARE((other.Plans("-1") + other.Groups("-1")).filter("New"), QStringList{"New@-1"});
    QVERIFY(!mended || (call == "plan" ? other.Plan("New") : other.Group("-1", "New")) == code);
  } else if (call == "change") {
    QTRY_COMPARE(QString::fromStdString(other.Detail(gate).name), QString("Changed"));
    QCOMPARE(other.Detail(gate).revision, change.revision + 1);
  } else {
    QTRY_VERIFY(other.Plan("Gate A").empty());
  }
  // This desk sees the same, and both follow each other.
  QTRY_VERIFY(here.Plans("-1") + here.Groups("-1") == other.Plans("-1") + other.Groups("-1"));
  QCOMPARE(here.AddPlan("-1", "From here"), QString());
  QTRY_VERIFY(!other.Plan("From here").empty());
  QCOMPARE(other.AddPlan("-1", "From there"), QString());
  QTRY_VERIFY(!here.Plan("From there").empty());
}

void StoreLineTest::SaysWhyItCannotBeOpened_data() {
  QTest::addColumn<QString>("prepare");
  QTest::addColumn<QString>("user");
  QTest::addColumn<QString>("password");
  QTest::addColumn<QString>("database");
  QTest::addColumn<QString>("query");
  QTest::addColumn<QString>("reason");  // the plain sentence
  QTest::addColumn<QString>("logged");  // of the server's own words
  const QString guarded = "DROP ROLE IF EXISTS guarded; CREATE ROLE guarded LOGIN PASSWORD 'right'";
  const QString crowded = "DROP ROLE IF EXISTS crowded; CREATE ROLE crowded LOGIN CONNECTION LIMIT 0";
  const QString reader =
      "DROP ROLE IF EXISTS reader; CREATE ROLE reader LOGIN; REVOKE CREATE ON SCHEMA public FROM PUBLIC";
  const auto add = [](const char* name) -> QTestData& { return QTest::newRow(name); };
  add("wrong password") << guarded << "guarded"
                        << "wrong"
                        << ""
                        << ""
                        << "user \"guarded\" is unknown or has another password"
                        << "password authentication failed";
  add("no password") << guarded << "guarded"
                     << ""
                     << ""
                     << ""
                     << "a password is needed for user \"guarded\""
                     << "no password supplied";
  add("unknown user") << ""
                      << "stranger"
                      << ""
                      << ""
                      << ""
                      << "user \"stranger\" is unknown or may not log in from here"
                      << "role \"stranger\" does not exist";
  add("unknown database") << ""
                          << "tarn"
                          << ""
                          << "nowhere"
                          << ""
                          << "there is no database \"nowhere\""
                          << "database \"nowhere\" does not exist";
  add("connection limit") << crowded << "crowded"
                          << ""
                          << ""
                          << ""
                          << "the server takes no more connections"
                          << "too many connections for role";
  add("no right to make tables") << reader << "reader"
                                 << ""
                                 << ""
                                 << ""
                                 << "user \"reader\" has no right to create tables"
                                 << "permission denied for schema public";
  add("no right to read") << reader + "; CREATE TABLE store_info (name TEXT, value TEXT)"
                          << "reader"
                          << ""
                          << ""
                          << ""
                          << "does not allow its user to do that"
                          << "permission denied for table store_info";
  add("no encryption") << ""
                       << "tarn"
                       << ""
                       << ""
                       << "sslmode=require"
                       << "server does not support SSL"
                       << "SSL";
  add("closed port") << ""
                     << ""
                     << ""
                     << ""
                     << ""
                     << "no server answers at 127.0.0.1:"
                     << "onnection refused";
}

void StoreLineTest::SaysWhyItCannotBeOpened() {
  QFETCH(QString, prepare);
  QFETCH(QString, user);
  QFETCH(QString, password);
  QFETCH(QString, database);
  QFETCH(QString, query);
  QFETCH(QString, reason);
  QFETCH(QString, logged);
  CStoreFixture fixture;
  for (const QString& statement : prepare.split(';', Qt::SkipEmptyParts)) {
    fixture.RunPastTheStore(statement);
  }
  QUrl url(fixture.Url());
  if (user.isEmpty()) {
    url.setPort(ClosedPort());
  } else {
    url = With(url, user, password, database);
  }
  url.setQuery(query);
  const CLogLines log;
  TarnHost::PlanStoreOptions options = fixture.options;
  options.url = url.toString();
  QString error;
  QVERIFY(!TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(error.contains(reason) && error.count('\n') == 0, qPrintable(error));
  QVERIFY2(log.Text().contains(logged), qPrintable(log.Text()));
  for (const QString& text : {error, log.Text()}) {
    QVERIFY2(password.isEmpty() || !text.contains(password), qPrintable(text));
  }
}

void StoreLineTest::ReportsTroubleWhileItLasts() {
  CStoreFixture fixture;
  CFaultyLine line(QUrl(fixture.Url()));
  fixture.options.url = line.Url();
  QStringList reported;
  fixture.options.on_trouble = [&](TarnHost::StoreTrouble trouble, const QString& text) {
    QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
    QCOMPARE(trouble == TarnHost::StoreTrouble::kNone, text.isEmpty());
    QVERIFY(trouble == TarnHost::StoreTrouble::kNone || trouble == TarnHost::StoreTrouble::kConnectionLost);
    reported.append(text);
  };
  {
    const CClient client(fixture.Open());
    for (int round = 0; round < 2; ++round) {
      reported.clear();
      line.Cut();
      QTRY_VERIFY(!reported.isEmpty() && reported.last().contains("no server answers at 127.0.0.1:"));
      const QStringList during = reported;
      QVERIFY(!QTest::qWaitFor([&] { return reported != during; }, 700));  // once, not with every attempt
      line.Mend();
      QTRY_COMPARE(reported.last(), QString());
      QCOMPARE(client.AddPlan("-1", "Works again"), QString());
    }
    reported.clear();
    line.Cut();
    QTRY_VERIFY(!reported.isEmpty());
  }
  const QStringList at_the_end = reported;
  QCoreApplication::processEvents();
  QCOMPARE(reported, at_the_end);  // a store that is closed reports nothing
}

// The reads right after a server was started again find connections that died while they lay idle.
void StoreLineTest::ReadsWhenItsConnectionsHaveDied() {
  CStoreFixture fixture;
  QString trouble;
  fixture.options.on_trouble = [&trouble](TarnHost::StoreTrouble, const QString& line) { trouble = line; };
  const auto cut_all = [&fixture] {
    fixture.RunPastTheStore(
        "SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity"
        " WHERE datname = current_database() AND pid <> pg_backend_pid()");
  };
  const CClient client(fixture.Open());
  const std::string plan = client.Plan("Gate A");
  for (int round = 0; round < 2; ++round) {
    QCOMPARE(client.Detail(plan).error_info, std::string());
    cut_all();
    QCOMPARE(client.Detail(plan).error_info, std::string());
  }
  QTRY_COMPARE(client.AddPlan("-1", "Works again"), QString());
  // By then there may be something else in its place.
  fixture.RunPastTheStore("ALTER TABLE store_info RENAME TO foreign_info");
  cut_all();
  QTRY_VERIFY2(trouble.endsWith("is not a plan store."), qPrintable(trouble));
  QVERIFY(!client.AddPlan("-1", "Into a foreign database").isEmpty());
  fixture.RunPastTheStore("ALTER TABLE foreign_info RENAME TO store_info");
  QTRY_COMPARE(trouble, QString());
  QCOMPARE(client.AddPlan("-1", "Works once more"), QString());
}

// Last: the server offers encrypted connections from here on.
void StoreLineTest::ChecksWhoTheServerIs() {
  CStoreFixture fixture;
  fixture.Open().reset();
  const QTemporaryDir folder;
  QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));  // the server writes there
  const QString root = folder.filePath("the server's root.crt"), quoted = QString(root).replace('\'', "''");
  for (const QString& statement :
       {QString("COPY (SELECT) TO PROGRAM 'openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=tarn -keyout server.key"
                " -out server.crt && chmod 600 server.key && cat server.crt > \"%1\"'")
            .arg(quoted),
        QString("ALTER SYSTEM SET ssl = on"), QString("SELECT pg_reload_conf()")}) {
    fixture.RunPastTheStore(statement);
  }
  QString error;
  const auto open = [&](const QString& mode, const QString& file) {
    QUrlQuery query;
    query.addQueryItem("sslmode", mode);
    query.addQueryItem("sslrootcert", file);
    QUrl url(fixture.Url());
    url.setQuery(query);
    TarnHost::PlanStoreOptions options = fixture.options;
    options.url = url.toString();
    error.clear();
    return TarnHost::CPlanStore::Open(options, &error) != nullptr;
  };
  QTRY_VERIFY2(open("verify-ca", root), qPrintable(error));
  QVERIFY(!open("verify-ca", folder.filePath("none.crt")));
  QVERIFY2(error.contains("root certificate file"), qPrintable(error));
  QVERIFY(!open("verify-full", root));
  QVERIFY2(error.contains("does not match"), qPrintable(error));
}

QTEST_GUILESS_MAIN(StoreLineTest)
#include "store_line_test.moc"
