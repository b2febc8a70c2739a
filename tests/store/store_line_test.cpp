#include <QTcpServer>
#include <QUrlQuery>
#include <QtTest>
#include <future>

#include "faulty_line.h"
#include "log_capture.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

// Said by each write, in this order.
const QByteArray kWriteBegins = "pg_advisory_xact_lock", kWriteEnds = "COMMIT";
const QByteArray kSignOfLife("Q\0\0\0\5\0", 6);  // asked for by a desk that has nothing else to ask
constexpr int kAnswerMs = 30000, kKnownMs = 2000;
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

quint16 ClosedPort() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return server.serverPort();
}

}  // namespace

/// What becomes of a store when its line or its server fails. Needs PostgreSQL.
class StoreLineTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void OthersSaveAfterADeskVanishedWhileItSaved();
  void AnswersWhatBecameOfAWrite_data();
  void AnswersWhatBecameOfAWrite();
  void SaysWhyItCannotBeOpened_data();
  void SaysWhyItCannotBeOpened();
  void ReportsTroubleWhileItLasts();
  void ReportsAnIdleLineThatIsCut_data();
  void ReportsAnIdleLineThatIsCut();
  void ReportsAFullDiskOfTheServerWhileItLasts();
  void ReadsWhenItsConnectionsHaveDied();
  void HearsOfChangesAtOnce();
  void HasOneSessionWhileItIsIdle();
  void ChecksWhoTheServerIs();
};

void StoreLineTest::OthersSaveAfterADeskVanishedWhileItSaved() {
  QVERIFY(!bob_.Plans("-1").isEmpty());
  CFaultyLine line(QUrl(fixture_->Url()));
  fixture_->options.url = line.Url();
  QVERIFY(!ann_.Plans("-1").isEmpty());
  line.FailAfter({kWriteBegins}, CFaultyLine::kSilent);
  CPendingCall lost(line, [this] { return ann_.AddPlan("-1", "Never saved"); });
  QTRY_VERIFY(line.HasFailed());
  QElapsedTimer clock;
  clock.start();
  QString error = "not tried";
  while (!error.isEmpty() && clock.elapsed() < 2 * kLockFreeMs) {
    error = CPendingCall(line, [this] { return bob_.AddPlan("-1", "Saved"); }).Answer();
  }
  QCOMPARE(error, QString());
  QVERIFY2(clock.elapsed() < kLockFreeMs, qPrintable(QString::number(clock.elapsed())));
  // Once the line is there again, so is the desk.
  line.Cut();
  QVERIFY(!lost.Answer().isEmpty());
  line.Mend();
  QTRY_VERIFY_WITH_TIMEOUT(ann_.Plans("-1") == bob_.Plans("-1"), kAnswerMs);
  QCOMPARE(bob_.Plans("-1").filter("aved"), QStringList{"Saved@-1"});
  QTRY_COMPARE(ann_.AddPlan("-1", "Works again"), QString());
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

// Who learns that nothing was saved does it again: a change that was saved all the same would be made twice.
void StoreLineTest::AnswersWhatBecameOfAWrite() {
  QFETCH(int, fault);
  QFETCH(QString, call);
  QFETCH(bool, mended);
  QFETCH(QString, wanted);
  const bool is_saved = wanted.isEmpty() || !mended;
  CFaultyLine line(QUrl(fixture_->Url()));
  const std::string gate = bob_.Plan("Gate A");
  fixture_->options.url = line.Url();
  auto change = ann_.Unchanged(gate);
  change.plan_name = "Changed";
  std::string code;
  const QMap<QString, std::function<QString()>> calls = {
      {"plan", [&] { return ann_.AddPlan("-1", "New", &code); }},
      {"group", [&] { return ann_.AddGroup("-1", "New", &code); }},
      {"change", [&] { return ann_.Update(change); }},
      {"deletion", [&] { return ann_.DeletePlan(gate); }},
  };
  line.FailAfter({kWriteBegins, kWriteEnds}, static_cast<CFaultyLine::Fault>(fault));
  CPendingCall pending(line, calls[call]);
  QTRY_VERIFY(line.HasFailed());
  if (mended) {
    line.Mend();
  }
  const QString answer = pending.Answer();
  QVERIFY2(wanted.isEmpty() ? answer.isEmpty() : answer.endsWith(wanted), qPrintable(answer));
  if (!mended) {
    line.Mend();
  }
  QVERIFY(is_saved || QTest::qWaitFor([&] { return calls[call]().isEmpty(); }));
  if (call == "change") {
    QTRY_COMPARE(bob_.Detail(gate).name, std::string("Changed"));
    QCOMPARE(bob_.Detail(gate).revision, change.revision + 1);
  } else if (call == "deletion") {
    QTRY_VERIFY(bob_.Plan("Gate A").empty());
  } else {
    QTRY_COMPARE((bob_.Plans("-1") + bob_.Groups("-1")).filter("New"), QStringList{"New@-1"});
    QVERIFY(!mended || (call == "plan" ? bob_.Plan("New") : bob_.Group("-1", "New")) == code);
  }
  // This desk sees the same, and both follow each other.
  QTRY_VERIFY(ann_.Plans("-1") + ann_.Groups("-1") == bob_.Plans("-1") + bob_.Groups("-1"));
  QString error = ann_.AddPlan("-1", "From here");
  if (!mended) {  // a desk that was without its line for longer refuses until it notices that it is there again
    QVERIFY(QTest::qWaitFor([&] { return error.isEmpty() || (error = ann_.AddPlan("-1", "From here")).isEmpty(); }));
  }
  QCOMPARE(error, QString());
  QTRY_COMPARE(bob_.Plans("-1").filter("From here").size(), 1);
  QCOMPARE(bob_.AddPlan("-1", "From there"), QString());
  QTRY_VERIFY(!ann_.Plan("From there").empty());
}

void StoreLineTest::SaysWhyItCannotBeOpened_data() {
  QTest::addColumn<QString>("prepare");
  QTest::addColumn<QString>("login");
  QTest::addColumn<QString>("rest");    // of the address: a path, a query or a closed port
  QTest::addColumn<QString>("reason");  // the plain sentence
  QTest::addColumn<QString>("logged");  // of the server's own words
  const auto add = [](const char* name, const char* prepare, const char* login, const char* rest, const char* reason,
                      const char* logged) { QTest::newRow(name) << prepare << login << rest << reason << logged; };
  const char guarded[] = "DROP ROLE IF EXISTS guarded; CREATE ROLE guarded LOGIN PASSWORD 'right'";
  const char crowded[] = "DROP ROLE IF EXISTS crowded; CREATE ROLE crowded LOGIN CONNECTION LIMIT 0";
  const char reader[] =
      "DROP ROLE IF EXISTS reader; CREATE ROLE reader LOGIN; REVOKE CREATE ON SCHEMA public FROM PUBLIC";
  const char info[] =
      "DROP ROLE IF EXISTS reader; CREATE ROLE reader LOGIN; CREATE TABLE store_info (name TEXT, value TEXT)";
  add("wrong password", guarded, "guarded:wrong", "", "user \"guarded\" is unknown or has another password",
      "password authentication failed");
  add("no password", guarded, "guarded", "", "a password is needed for user \"guarded\"", "no password supplied");
  add("unknown user", "", "stranger", "", "user \"stranger\" is unknown or may not log in from here",
      "role \"stranger\" does not exist");
  add("unknown database", "", "tarn", "/nowhere", "there is no database \"nowhere\"",
      "database \"nowhere\" does not exist");
  add("connection limit", crowded, "crowded", "", "the server takes no more connections",
      "too many connections for role");
  add("no right to make tables", reader, "reader", "", "user \"reader\" has no right to create tables",
      "permission denied for schema public");
  add("no right to read", info, "reader", "", "does not allow its user to do that",
      "permission denied for table store_info");
  add("no encryption", "", "tarn", "?sslmode=require", "server does not support SSL", "SSL");
  add("closed port", "", "tarn", ":closed", "no server answers at 127.0.0.1:", "onnection refused");
}

void StoreLineTest::SaysWhyItCannotBeOpened() {
  QFETCH(QString, prepare);
  QFETCH(QString, login);
  QFETCH(QString, rest);
  QFETCH(QString, reason);
  QFETCH(QString, logged);
  for (const QString& statement : prepare.split(';', Qt::SkipEmptyParts)) {
    fixture_->RunPastTheStore(statement);
  }
  QUrl url(fixture_->Url());
  url.setUserInfo(login);
  if (rest.startsWith('/')) {
    url.setPath(rest);
  } else if (rest.startsWith('?')) {
    url.setQuery(rest.mid(1));
  } else if (!rest.isEmpty()) {
    url.setPort(ClosedPort());
  }
  fixture_->options.url = url.toString();
  const TarnTest::CLogCapture capture;
  const QString error = fixture_->OpeningError(), password = login.section(':', 1);
  const QString log = capture.Lines().join('\n');
  QVERIFY2(error.contains(reason) && error.count('\n') == 0, qPrintable(error));
  QVERIFY2(log.contains(logged), qPrintable(log));
  QVERIFY2(password.isEmpty() || !(error + log).contains(password), qPrintable(error + log));
}

void StoreLineTest::ReportsTroubleWhileItLasts() {
  const CClient eve(fixture_.get(), "eve");
  QCOMPARE(bob_.Groups("-1"), eve.Groups("-1"));  // both without the line
  CFaultyLine line(QUrl(fixture_->Url()));
  fixture_->options.url = line.Url();
  FollowTroubles({TarnHost::StoreTrouble::kConnectionLost});
  QVERIFY(!ann_.Plans("-1").isEmpty());
  for (int round = 0; round < 2; ++round) {
    troubles_.clear();
    line.Cut();
    QTRY_VERIFY(!troubles_.isEmpty() && troubles_.last().contains("no server answers at 127.0.0.1:"));
    const QStringList during = troubles_;
    // As long as another store looks ten times: this one tries less often, but more than once.
    for (int look = 0; look < 10; ++look) {
      QCOMPARE(eve.AddGroup("-1", "One more"), QString());
      QTRY_COMPARE(bob_.Groups("-1"), eve.Groups("-1"));
    }
    QCOMPARE(troubles_, during);  // once, not with every attempt
    line.Mend();
    QTRY_COMPARE(troubles_.last(), QString());
    QCOMPARE(ann_.AddPlan("-1", "Works again"), QString());
  }
  troubles_.clear();
  line.Cut();
  QTRY_VERIFY(!troubles_.isEmpty());
  ann_.Leave();
  const QStringList at_the_end = troubles_;
  QCoreApplication::processEvents();
  QCOMPARE(troubles_, at_the_end);  // a store that is closed reports nothing
}

void StoreLineTest::ReportsAnIdleLineThatIsCut_data() {
  QTest::addColumn<bool>("silent");
  QTest::newRow("silent") << true;
  QTest::newRow("cut") << false;
}

void StoreLineTest::ReportsAnIdleLineThatIsCut() {
  QFETCH(bool, silent);
  CFaultyLine line(QUrl(fixture_->Url()));
  fixture_->options.url = line.Url();
  FollowTroubles({TarnHost::StoreTrouble::kConnectionLost, TarnHost::StoreTrouble::kNotAnswering});
  QVERIFY(!ann_.Plans("-1").isEmpty());
  if (silent) {
    line.FailAfter({kSignOfLife}, CFaultyLine::kSilent);
    QTRY_VERIFY(line.HasFailed());
  } else {
    line.Cut();
  }
  QElapsedTimer clock;
  clock.start();
  QTRY_VERIFY(!troubles_.isEmpty());
  QVERIFY2(clock.elapsed() < kKnownMs, qPrintable(QString::number(clock.elapsed())));
  line.Cut();
  line.Mend();
  QTRY_COMPARE(troubles_.last(), QString());
  QCOMPARE(ann_.AddPlan("-1", "Works again"), QString());
}

// The look that finds what was not announced is 5 s away.
void StoreLineTest::HearsOfChangesAtOnce() {
  QVERIFY(!ann_.Plans("-1").isEmpty() && !bob_.Plans("-1").isEmpty());
  QElapsedTimer clock;
  clock.start();
  for (const char* name : {"One", "Two", "Three", "Four", "Five"}) {
    for (const auto& [from, to] : {std::make_pair(ann_, bob_), std::make_pair(bob_, ann_)}) {
      QCOMPARE(from.AddPlan("-1", name), QString());
      QTRY_COMPARE(to.Plans("-1"), from.Plans("-1"));
    }
  }
  QVERIFY2(clock.elapsed() < kKnownMs, qPrintable(QString::number(clock.elapsed())));
  // By a program that announces nothing.
  fixture_->ReadPastTheStore("UPDATE plan SET name = 'Other' WHERE name = 'One'");
  fixture_->ReadPastTheStore("UPDATE counter SET value = value + 3 WHERE name = 'seq'");
  QTRY_VERIFY_WITH_TIMEOUT(!ann_.Plan("Other").empty(), kAnswerMs);
}

void StoreLineTest::HasOneSessionWhileItIsIdle() {
  const auto sessions = [this] {
    return fixture_->ReadPastTheStore(
        "SELECT count(*) - 1 FROM pg_stat_activity WHERE datname = current_database() AND backend_type = 'client "
        "backend'");
  };
  QCOMPARE(ann_.Detail(ann_.Plan("Gate A")).error_info, std::string());
  QCOMPARE(sessions(), QString("2"));
  QTRY_COMPARE_WITH_TIMEOUT(sessions(), QString("1"), kAnswerMs);
  QCOMPARE(ann_.Detail(ann_.Plan("Gate A")).error_info, std::string());
}

void StoreLineTest::ReportsAFullDiskOfTheServerWhileItLasts() {
  FollowTroubles({TarnHost::StoreTrouble::kNoRoom});
  QVERIFY(!ann_.Plans("-1").isEmpty());
  fixture_->RunPastTheStore(
      "CREATE FUNCTION has_no_room() RETURNS trigger LANGUAGE plpgsql AS"
      " $$ BEGIN RAISE EXCEPTION 'could not extend file' USING ERRCODE = 'disk_full'; END $$");
  fixture_->RunPastTheStore(
      "CREATE TRIGGER no_room BEFORE INSERT ON change_log FOR EACH ROW EXECUTE FUNCTION has_no_room()");
  const QString refusal = ann_.AddPlan("-1", "Too much");
  QVERIFY2(refusal.endsWith("has no room left: its disk is full."), qPrintable(refusal));
  QTRY_COMPARE(troubles_, QStringList{refusal});
  QCOMPARE(ann_.AddPlan("-1", "Still too much"), refusal);
  fixture_->RunPastTheStore("DROP TRIGGER no_room ON change_log");
  QTRY_COMPARE_WITH_TIMEOUT(troubles_, (QStringList{refusal, QString()}), kAnswerMs);  // without a change of hers
  QCOMPARE(ann_.Plans("-1").filter("much"), QStringList());
}

// The reads right after a server was started again find connections that died while they lay idle.
void StoreLineTest::ReadsWhenItsConnectionsHaveDied() {
  QString trouble;
  fixture_->options.on_trouble = [&trouble](TarnHost::StoreTrouble, const QString& line) { trouble = line; };
  const auto cut_all = [this] {
    fixture_->RunPastTheStore(
        "SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity"
        " WHERE datname = current_database() AND pid <> pg_backend_pid()");
  };
  const std::string plan = ann_.Plan("Gate A");
  for (int round = 0; round < 2; ++round) {
    QCOMPARE(ann_.Detail(plan).error_info, std::string());
    cut_all();
    QCOMPARE(ann_.Detail(plan).error_info, std::string());
  }
  QTRY_COMPARE(ann_.AddPlan("-1", "Works again"), QString());
  // By then there may be something else in its place.
  fixture_->RunPastTheStore("ALTER TABLE store_info RENAME TO foreign_info");
  cut_all();
  QTRY_VERIFY2(trouble.endsWith("is not a plan store."), qPrintable(trouble));
  QVERIFY(!ann_.AddPlan("-1", "Into a foreign database").isEmpty());
  fixture_->RunPastTheStore("ALTER TABLE foreign_info RENAME TO store_info");
  QTRY_COMPARE(trouble, QString());
  QCOMPARE(ann_.AddPlan("-1", "Works once more"), QString());
}

// Last: the server offers encrypted connections from here on.
void StoreLineTest::ChecksWhoTheServerIs() {
  fixture_->Make();
  const QTemporaryDir folder;
  QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));  // the server writes there
  const QString root = folder.filePath("the server's root.crt"), quoted = QString(root).replace('\'', "''");
  for (const QString& statement :
       {QString("COPY (SELECT) TO PROGRAM 'openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=tarn -keyout server.key"
                " -out server.crt && chmod 600 server.key && cat server.crt > \"%1\"'")
            .arg(quoted),
        QString("ALTER SYSTEM SET ssl = on"), QString("SELECT pg_reload_conf()")}) {
    CDirectAccess(CStoreFixture::SuperuserUrl()).Run(statement);
  }
  QString error;
  QUrl url(fixture_->Url());
  const auto open = [&](const QString& mode, const QString& file) {
    QUrlQuery query;
    query.addQueryItem("sslmode", mode);
    query.addQueryItem("sslrootcert", file);
    url.setQuery(query);
    fixture_->options.url = url.toString();
    error = fixture_->OpeningError();
    return error.isEmpty();
  };
  QTRY_VERIFY2(open("verify-ca", root), qPrintable(error));
  QVERIFY(!open("verify-ca", folder.filePath("none.crt")));
  QVERIFY2(error.contains("root certificate file"), qPrintable(error));
  QVERIFY(!open("verify-full", root));
  QVERIFY2(error.contains("does not match"), qPrintable(error));
}

QTEST_GUILESS_MAIN(StoreLineTest)
#include "store_line_test.moc"
