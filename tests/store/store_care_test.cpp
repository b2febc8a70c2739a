#include <QFile>
#include <QtTest>
#include <atomic>
#include <thread>

#include <sys/stat.h>

#include "TarnHost/store_care.h"
#include "store_fixture.h"

using namespace StoreTest;
using TarnHost::StoreCare;

namespace {

struct Checked {
  bool done = false;
  QStringList findings;
  QString summary, error;
};

Checked Check(const QString& url) {
  Checked checked;
  checked.done = StoreCare::Check(url, &checked.findings, &checked.summary, &checked.error);
  return checked;
}

// Locks of this process on the file. The system lists those of all processes; one that is set or let go while the list
// is read can bring a line a second time or leave one out, so lines that are alike count once and a caller tries again.
QSet<QString> LocksOn(const QString& name) {
  struct stat status {};
  QFile locks("/proc/locks");
  if (::stat(QFile::encodeName(name).constData(), &status) != 0 || !locks.open(QIODevice::ReadOnly)) {
    return {};
  }
  const QRegularExpression own(
      QString(": (.* %1 \\S+:%2 .*)").arg(QCoreApplication::applicationPid()).arg(status.st_ino));
  QSet<QString> found;
  for (auto line = own.globalMatch(QString::fromLatin1(locks.readAll())); line.hasNext();) {
    found.insert(line.next().captured(1));
  }
  return found;
}

}  // namespace

/// What is said of stores that somebody else has changed, and how they are copied.
class StoreCareTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void FindsNothingInASoundStore();
  void NamesWhatItFinds_data();
  void NamesWhatItFinds();
  void PlaysAndChangesNoDamagedPlan_data();
  void PlaysAndChangesNoDamagedPlan();
  void LeavesForeignDatabasesAlone_data();
  void LeavesForeignDatabasesAlone();
  void CopiesAStoreThatIsInUse();
  void WritesNoCopyOverAnything();
  void BearsRowsChangedPastTheProgram();
  void KeepsThePlayLogForAWhile();
};

void StoreCareTest::FindsNothingInASoundStore() {
  for (const bool small : {true, false}) {
    CStoreFixture fixture;
    fixture.options.first_content = small ? SmallSite : TarnHost::MakeDemoSite;
    const Checked none = Check(fixture.Url());
    QVERIFY(!none.done && !none.error.isEmpty());
    const CClient client(&fixture, small ? "ann" : "operator");
    std::string group;
    QCOMPARE(client.AddGroup("-2", "Mine", &group), QString());
    QCOMPARE(client.AddPlan(group, QString::fromUtf8("\u95e8 \uffff").toStdString()), QString());
    QCOMPARE(client.SetDefaultView(group, 16001), QString());
    QCOMPARE(client.Share(client.Plan(small ? "Gate A" : "Gate overview"), "2"), QString());
    const Checked checked = Check(fixture.Url());
    QVERIFY2(checked.done && checked.findings.isEmpty(), qPrintable(checked.findings.join('\n') + checked.error));
    QVERIFY2(
        checked.summary.endsWith(small ? "7 groups, 7 plans, 6 users; sound" : "32 groups, 122 plans, 4 users; sound"),
        qPrintable(checked.summary));
  }
}

// A row past the program, and the start of the line that names it.
void StoreCareTest::NamesWhatItFinds_data() {
  QTest::addColumn<QString>("named");
  const auto add = [](const char* statement, const char* named) { QTest::newRow(statement) << named; };
  add("UPDATE plan_group SET parent_code = code WHERE code = 100002", "Group \"North\" (100002) is below itself");
  add("UPDATE plan_group SET parent_code = 77 WHERE code = 100002", "Group \"North\" (100002) is in group 77");
  add("UPDATE plan_group SET family = 2 WHERE code = 100001", "Group \"Gates\" (100001) is of another family");
  add("UPDATE plan_group SET family = 9 WHERE code = 100001", "Group \"Gates\" (100001) is of an unknown family 9");
  add("UPDATE plan_group SET owner_id = 9 WHERE code = 100004", "Group \"Bob's\" (100004) belongs to user 9");
  add("UPDATE plan_group SET name = ' ' WHERE code = 100001", "Group \" \" (100001) has no possible name");
  add("UPDATE plan_group SET code = -7 WHERE code = 100002", "Group \"North\" (-7) has no possible code");
  add("UPDATE plan SET code = 100005 WHERE name = 'Top'", "Plan \"Top\" (100005) has the code of a group");
  add("UPDATE plan SET parent_code = 77 WHERE code = 100006", "Plan \"Gate A\" (100006) is in group 77");
  add("UPDATE plan SET parent_code = -1 WHERE code = 100006", "Plan \"Gate A\" (100006): name, place, picture");
  add("UPDATE plan SET name = 'Gate Z' WHERE code = 100006", "Plan \"Gate Z\" (100006): name, place, picture");
  add("UPDATE plan SET revision = 7 WHERE code = 100006", "Plan \"Gate A\" (100006) was last saved by");
  add("UPDATE plan SET begin_time = '25:00', checksum = '' WHERE code = 100006",
      "Plan \"Gate A\" (100006): \"25:00\" is not");
  add("INSERT INTO default_view (user_id, code, type) VALUES (2, 77, 16000)", "The default view of user 2 is 77");
  add("INSERT INTO user_right (user_id, code) VALUES (9, 5)", "User 9 has right 5");
  add("INSERT INTO user_group_member (user_group_id, user_id) VALUES (1, 2)", "User group 1 has user 2");
  add("INSERT INTO group_audience (group_code, user_group_id) VALUES (100001, 7)", "Group 100001 is limited to user");
  add("INSERT INTO group_audience (group_code, user_group_id) VALUES (100003, 7)", "Group 100003 is limited to user");
  add("INSERT INTO kept_plan_group SELECT 7, code, parent_code, family, owner_id, name FROM plan_group"
      " WHERE code = 100001",
      "Row \"Gates\" (100001) was deleted and is there all the same");
  add("INSERT INTO kept_plan_group SELECT 7, code + 5000, parent_code, family, owner_id, name FROM plan_group"
      " WHERE code = 100001",
      "Row \"Gates\" (105001) was deleted, but is kept for no deletion");
  add("INSERT INTO kept_plan (deletion, code, parent_code, family, owner_id, name, split_type, page_count, auto_run,"
      " begin_time, end_time, cameras, creator, creation_time, revision, changed_by, changed_at, checksum) SELECT 7,"
      " code + 5000, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,"
      " cameras, creator, creation_time, revision, changed_by, changed_at, checksum FROM plan WHERE code = 100006",
      "Plan \"Gate A\" (105006) was deleted, and its content is not kept");
  if (!CStoreFixture::OnPostgres()) {  // a server refuses such a row itself
    add("INSERT INTO deletion (code, is_group, parent_code, family, owner_id, name, namesakes, user_id, deleted_at)"
        " SELECT code, 0, parent_code, family, owner_id, name, 0, 2, 1 FROM plan WHERE code = 100006",
        "Row \"Gate A\" (100006) was deleted, but is not kept");
  }
  add("ALTER TABLE user_right RENAME TO elsewhere", "The rights cannot be read: ");
  add("DELETE FROM camera WHERE id = 1002",
      "Plan \"Gate A\" (100006) shows camera \"Yard camera\" (1002), which is not there, in window 2 of page 1");
  add("UPDATE camera SET region_id = 7 WHERE id = 1002", "Camera \"Yard camera\" (1002) is in a region");
  add("UPDATE region SET parent_id = 7", "Region \"Yard\" (1) is in a region");
  add("UPDATE counter SET value = 100003 WHERE name = 'code'", "Codes are given from 100004 on, but 100010");
  add("INSERT INTO change_log (seq, origin, kind, code) VALUES (99, 'x', 1, 1)", "The log has change 99");
}

void StoreCareTest::NamesWhatItFinds() {
  QFETCH(QString, named);
  fixture_->Make();
  fixture_->RunPastTheStore(QTest::currentDataTag());
  const Checked checked = Check(fixture_->Url());
  QVERIFY2(checked.done, qPrintable(checked.error));
  QVERIFY2(("\n" + checked.findings.join('\n')).contains("\n" + named), qPrintable(checked.findings.join('\n')));
  QVERIFY(checked.findings.filter("cannot be read").size() <= 1);  // what comes after it is read all the same
  QVERIFY2(checked.summary.endsWith(QString("findings: %1").arg(checked.findings.size())), qPrintable(checked.summary));
}

// What a column of the plan "Gate A" is set to, and what is said of it. Without a checksum, as an older program wrote
// it.
void StoreCareTest::PlaysAndChangesNoDamagedPlan_data() {
  QTest::addColumn<QString>("set");
  QTest::addColumn<QString>("fault");
  const auto add = [](const char* name, const QString& set, const char* fault) {
    QTest::newRow(name) << set + (set.contains("checksum") ? "" : " & checksum = ''") << fault;
  };
  const QString page = R"(pages = '[{"no":1,"split":2,"windows":[{"no":1,"kind":1,"code":"7"}]},{"no":2,"split":1}]')";
  add("no pages", "pages = ''", "its pages cannot be read");
  add("half", "pages = substr(pages, 1, length(pages) - 3)", "its pages cannot be read");
  add("no list", R"(pages = '{"no":1}')", "its pages cannot be read");
  add("no page", "pages = '[1,2]'", "its pages cannot be read");
  add("split of a wrong kind", QString(page).replace(R"("split":2)", R"("split":"2")"), "its pages cannot be read");
  add("broken number", QString(page).replace(R"("no":2)", R"("no":2.5)"), "its pages cannot be read");
  add("windows of a wrong kind", QString(page).replace(R"("windows":[)", R"("windows":7,"more":[)"),
      "its pages cannot be read");
  add("empty list", "pages = '[]'", "it has 0 of its 2 pages");
  add("fewer pages", "page_count = 3", "it has 2 of its 3 pages");
  add("more pages", "page_count = 0", "it has 2 of its 0 pages");
  add("no such split", QString(page).replace(R"("split":2)", R"("split":3)"), "a page has an unknown split 3");
  add("no such page", QString(page).replace(R"("no":2)", R"("no":-2)"), "a page has the number -2");
  add("no such window", QString(page).replace(R"("no":1,"kind")", R"("no":17,"kind")"),
      "a page has a window number 17");
  add("no such preset", QString(page).replace(R"("code":"7")", R"("preset":-1)"), "a window has a number below zero");
  add("another split in the tree", "split_type = 8", "its split is not that of its first page");
  add("another camera", "pages = replace(pages, '1002', '1003') & checksum = checksum",
      "its content is not what was saved");
  add("another time", "begin_time = '03:00:00', checksum = checksum", "its content is not what was saved");
  add("suddenly automatic", "auto_run = 1, checksum = checksum", "its content is not what was saved");
}

void StoreCareTest::PlaysAndChangesNoDamagedPlan() {
  QFETCH(QString, set);
  QFETCH(QString, fault);
  const std::string plan = ann_.Plan("Gate A");
  const QString gates = QString::fromStdString(ann_.Group("-1", "Gates"));
  auto move = ann_.Unchanged(plan), move_of_the_rest = move;
  move.parent_index_code = move_of_the_rest.parent_index_code = "-1";
  move_of_the_rest.pages.clear();  // as a mover hands on what is left of it
  for (const QString& column : set.split(" & ")) {
    const bool is_content = column.startsWith("pages");
    fixture_->RunPastTheStore(QString("UPDATE %1 SET %2 WHERE code = %3")
                                  .arg(is_content ? "plan_content" : "plan", column, QString::fromStdString(plan)));
  }
  const QString line = QString("The plan \"Gate A\" (%1) is damaged: %2.").arg(QString::fromStdString(plan), fault);
  QCOMPARE(QString::fromStdString(ann_.Detail(plan).error_info), line);
  QVERIFY(ann_.Detail(plan).pages.empty());
  for (const QString& refusal : {ann_.Update(move), ann_.Update(move_of_the_rest), ann_.Share(plan, "2")}) {
    QCOMPARE(refusal, line);
  }
  QVERIFY(Check(fixture_->Url()).findings.contains(line));
  QCOMPARE(ann_.Plans(gates), QStringList{"Gate A@" + gates});
  QCOMPARE(ann_.SetDefaultView(plan, kPlanType), QString());
  QCOMPARE(ann_.DeletePlan(plan), QString());
  QCOMPARE(Check(fixture_->Url()).findings, QStringList());
}

void StoreCareTest::LeavesForeignDatabasesAlone_data() {
  QTest::addColumn<QStringList>("statements");
  const auto add = [](const char* name, const QStringList& statements) { QTest::newRow(name) << statements; };
  const QString info = "CREATE TABLE store_info (name TEXT PRIMARY KEY, value TEXT)";
  add("other tables", {"CREATE TABLE recipes (name TEXT)"});
  add("a view alone", {"CREATE VIEW recipes AS SELECT 1 AS one"});
  add("a table of the same name", {"CREATE TABLE store_info (shop TEXT)", "INSERT INTO store_info VALUES ('x')"});
  add("and the same columns", {info, "INSERT INTO store_info VALUES ('version', '1')"});
  add("and much alike", {info, "INSERT INTO store_info VALUES ('version', '2'), ('station_id', 'x')",
                         "CREATE TABLE plan (code INTEGER)", "CREATE TABLE counter (name TEXT)"});
  if (CStoreFixture::OnPostgres()) {
    add("in a schema of their own", {"CREATE SCHEMA kitchen", "CREATE TABLE kitchen.recipes (n TEXT)"});
  }
}

void StoreCareTest::LeavesForeignDatabasesAlone() {
  QFETCH(QStringList, statements);
  for (const QString& statement : statements) {
    fixture_->RunPastTheStore(statement);
  }
  const auto things = [this] {
    return fixture_->ReadPastTheStore(CStoreFixture::OnPostgres() ? "SELECT count(*) FROM pg_class"
                                                                  : "SELECT count(*) FROM sqlite_master");
  };
  const QString before = things();
  for (const QString& error : {fixture_->OpeningError(), fixture_->OpeningError(), Check(fixture_->Url()).error}) {
    QVERIFY2(error.endsWith(" is not a plan store."), qPrintable(error));
    QCOMPARE(things(), before);
  }
}

void StoreCareTest::CopiesAStoreThatIsInUse() {
  QCOMPARE(ann_.AddPlan("-1", "Still in the log"), QString());
  auto request = ann_.Unchanged(ann_.Plan("Gate A"));
  request.thumbnail = std::string("\0\xff picture", 10);
  QCOMPARE(ann_.Update(request), QString());
  QCOMPARE(ann_.DeletePlan(ann_.Plan("Gate B")), QString());
  QString error;
  const QTemporaryDir folder;
  const QString copy = folder.filePath("copy of it.db");
  QSet<QString> locks;
  QTRY_VERIFY(CStoreFixture::OnPostgres() || !(locks = LocksOn(fixture_->File())).isEmpty());
  std::atomic<bool> is_over{false};
  bool done = false;
  std::thread backup([&] {
    done = StoreCare::BackUp(fixture_->Url(), copy, &error);
    is_over = true;
  });
  do {
    std::string code;
    QCOMPARE(ann_.AddPlan("-1", "Meanwhile", &code), QString());
    QCOMPARE(ann_.DeletePlan(code), QString());
  } while (!is_over);
  backup.join();
  QVERIFY2(done, qPrintable(error));
  QTRY_COMPARE(LocksOn(fixture_->File()), locks);  // a copy that closed the file would take the client's locks with it
  QCOMPARE(ann_.AddPlan("-1", "Later"), QString());
  QCOMPARE(QFileInfo(copy).dir().entryList({"copy*"}), QStringList{"copy of it.db"});
  QCOMPARE(Check("sqlite:" + copy).findings, QStringList());
  fixture_->options.url = "sqlite:" + copy;
  const CClient other(fixture_.get(), "ann");
  QVERIFY(other.Plans("-1").contains("Still in the log@-1") && !other.Plans("-1").contains("Later@-1"));
  QCOMPARE(other->StationId(), ann_->StationId());
  QCOMPARE(other.Detail(other.Plan("Gate A")).thumbnail, request.thumbnail);
  QCOMPARE(other.AddPlan("-1", "In the copy alone"), QString());
}

void StoreCareTest::WritesNoCopyOverAnything() {
  if (CStoreFixture::OnPostgres()) {
    QSKIP("A server's store has no file.");
  }
  fixture_->Make();
  const QDir folder = QFileInfo(fixture_->File()).dir();
  QFile taken(folder.filePath("taken"));
  QVERIFY(taken.open(QIODevice::WriteOnly));
  QVERIFY(QFile::link("/nowhere", folder.filePath("dangling")));
  const QStringList before = folder.entryList(QDir::Files | QDir::System);
  const auto refuses = [&](const QString& url, const QString& copy, const char* reason) {
    QString error;
    return !StoreCare::BackUp(url, copy, &error) && error.contains(reason) && !error.contains('\n');
  };
  const QString url = fixture_->Url(), fresh = folder.filePath("new");
  QVERIFY(refuses(url, folder.filePath("taken"), "exists already"));
  QVERIFY(refuses(url, folder.filePath("dangling"), "exists already"));
  QVERIFY(refuses(url, fixture_->File(), "exists already"));
  QVERIFY(refuses(url, "/proc/none/copy.db", "cannot be made"));
  QVERIFY(refuses("sqlite:" + folder.filePath("taken"), fresh, "is empty"));
  QVERIFY(refuses("sqlite:" + folder.filePath("missing"), fresh, "cannot be read"));
  QCOMPARE(folder.entryList(QDir::Files | QDir::System), before);
  QCOMPARE(taken.size(), qint64(0));
}

void StoreCareTest::BearsRowsChangedPastTheProgram() {
  const std::string gates = ann_.Group("-1", "Gates"), north = ann_.Group(gates, "North");
  const auto put_below = [this](const std::string& group, const std::string& parent) {
    fixture_->RunPastTheStore(
        QString::fromStdString("UPDATE plan_group SET parent_code = " + parent + " WHERE code = " + group));
  };
  // There is no notice of the change itself, but the next one of the program brings the row.
  put_below(north, "-1");
  QCOMPARE(ann_.RenameGroup(north, "Moved"), QString());
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList({"Gates@-1", "Moved@-1"}));
    QCOMPARE(client.Groups(gates), QStringList());
  }
  // Below each other, then below itself: no writer hangs, no client falls.
  put_below(north, gates);
  put_below(gates, north);
  QVERIFY(ann_.AddGroup(north, "x").contains("6 levels"));
  QCOMPARE(bob_.RenameGroup(gates, "Round"), QString());
  QCOMPARE(bob_.RenameGroup(north, "About"), QString());
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList());
    QVERIFY(client.Plans(gates).value(0).startsWith('!') && client.Plans(north).value(0).startsWith('!'));
  }
  // Put right, they come back with all below them.
  put_below(gates, "-1");
  QCOMPARE(ann_.RenameGroup(gates, "Gates"), QString());
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList{"Gates@-1"});
    QTRY_COMPARE(client.Groups(gates), QStringList{"About@" + QString::fromStdString(gates)});
    QVERIFY(client.Plans(gates).value(0).startsWith("Gate A@") && client.Plans(north).value(0).startsWith("Gate B@"));
  }
  put_below(gates, gates);
  QVERIFY(ann_.AddGroup(gates, "x").contains("6 levels"));
  QCOMPARE(CClient(fixture_.get(), "cid").Groups("-1"), QStringList());
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QVERIFY(ann_.DeleteGroup(north).contains("deleted in the meantime"));  // it hung below the other
}

// By parts, and not by a clock that is far ahead of all others.
// A server goes by its own clock, so the desk's has to be right but where it is said to be wrong.
void StoreCareTest::KeepsThePlayLogForAWhile() {
  QDateTime now = QDateTime::currentDateTime();
  fixture_->options.now = [&now] { return now; };
  const auto play = [this] {
    view::AddPlanLogRequestParam request;
    request.name = "Gate A";
    view::AddPlanLogResponseParam response;
    return ann_->AddPlanLog(request, response);
  };
  const auto entries = [this] { return fixture_->ReadPastTheStore("SELECT count(*) FROM plan_log").toInt(); };
  const auto add_old = [this, &now](int days, int count) {
    fixture_->RunPastTheStore(
        QString("INSERT INTO plan_log SELECT '%1 ' || number, 1, 'old', 0, 0 FROM (WITH RECURSIVE numbers(number) AS "
                "(SELECT 10001 UNION ALL SELECT number + 1 FROM numbers WHERE number < %2) SELECT number FROM numbers) "
                "AS many")
            .arg(now.addDays(-days).toString("yyyy-MM-dd"))
            .arg(10000 + count));
  };
  QVERIFY(play());
  now = now.addYears(20);  // a clock that is years ahead
  QVERIFY(play());
  QCOMPARE(entries(), 2);
  now = now.addYears(-20);
  add_old(80, 3);
  add_old(92, 2500);
  now = now.addDays(1);
  for (const int left : {1506, 507, 8, 9}) {
    QVERIFY(play());
    QCOMPARE(entries(), left);
  }
  ann_.Leave();
}

QTEST_GUILESS_MAIN(StoreCareTest)
#include "store_care_test.moc"
