#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

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

// Locks of this process on the file.
int LocksOn(const QString& name) {
  struct stat status {};
  QFile locks("/proc/locks");
  if (::stat(QFile::encodeName(name).constData(), &status) != 0 || !locks.open(QIODevice::ReadOnly)) {
    return -1;
  }
  const QRegularExpression own(QString(" %1 \\S+:%2 ").arg(QCoreApplication::applicationPid()).arg(status.st_ino));
  return QString::fromLatin1(locks.readAll()).count(own);
}

}  // namespace

class StoreCareTest : public QObject {
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
};

void StoreCareTest::FindsNothingInASoundStore() {
  for (const auto& site : {&SmallSite, &TarnHost::MakeDemoSite}) {
    CStoreFixture fixture;
    fixture.options.first_content = site;
    const Checked none = Check(fixture.Url());
    QVERIFY(!none.done && !none.error.isEmpty());
    const bool small = site == &SmallSite;
    const CClient client(fixture.Open(small ? "ann" : "operator"));
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
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("named");
  const auto add = [](const char* name, const char* statement, const char* named) {
    QTest::newRow(name) << statement << named;
  };
  add("own parent", "UPDATE plan_group SET parent_code = code WHERE name = 'North'",
      "Group \"North\" (100002) is below itself");
  add("no parent", "UPDATE plan_group SET parent_code = 77 WHERE name = 'North'",
      "Group \"North\" (100002) is in group 77");
  add("other family", "UPDATE plan_group SET family = 2 WHERE name = 'Gates'",
      "Group \"Gates\" (100001) is of another family");
  add("no family", "UPDATE plan_group SET family = 9 WHERE name = 'Gates'",
      "Group \"Gates\" (100001) is of an unknown family 9");
  add("no owner", "UPDATE plan_group SET owner_id = 9 WHERE name = 'Bob''s'",
      "Group \"Bob's\" (100004) belongs to user 9");
  add("name", "UPDATE plan_group SET name = ' ' WHERE name = 'Gates'", "Group \" \" (100001) has no possible name");
  add("code", "UPDATE plan_group SET code = -7 WHERE name = 'North'", "Group \"North\" (-7) has no possible code");
  add("plan of a group's code", "UPDATE plan SET code = 100005 WHERE name = 'Top'",
      "Plan \"Top\" (100005) has the code of a group");
  add("plan without a group", "UPDATE plan SET parent_code = 77 WHERE name = 'Gate A'",
      "Plan \"Gate A\" (100006) is in group 77");
  add("plan moved", "UPDATE plan SET parent_code = -1 WHERE name = 'Gate A'",
      "Plan \"Gate A\" (100006): name, place, picture");
  add("plan renamed", "UPDATE plan SET name = 'Gate Z' WHERE name = 'Gate A'",
      "Plan \"Gate Z\" (100006): name, place, picture");
  add("plan's revision", "UPDATE plan SET revision = 7 WHERE name = 'Gate A'",
      "Plan \"Gate A\" (100006) was last saved by");
  add("time", "UPDATE plan SET begin_time = '25:00', checksum = '' WHERE name = 'Gate A'",
      "Plan \"Gate A\" (100006): \"25:00\" is not");
  add("default view", "INSERT INTO default_view (user_id, code, type) VALUES (2, 77, 16000)",
      "The default view of user 2 is 77");
  add("right", "INSERT INTO user_right (user_id, code) VALUES (9, 5)", "User 9 has right 5");
  add("table", "ALTER TABLE user_right RENAME TO elsewhere", "The rights cannot be read: ");
  add("counter", "UPDATE counter SET value = 100003 WHERE name = 'code'", "Codes are given from 100004 on, but 100010");
  add("log", "INSERT INTO change_log (seq, origin, kind, code) VALUES (99, 'x', 1, 1)", "The log has change 99");
}

void StoreCareTest::NamesWhatItFinds() {
  QFETCH(QString, statement);
  QFETCH(QString, named);
  CStoreFixture fixture;
  const CClient open(fixture.Open());
  fixture.RunPastTheStore(statement);
  const Checked checked = Check(fixture.Url());
  QVERIFY2(checked.done, qPrintable(checked.error));
  const auto begins = [&named](const QString& line) { return line.startsWith(named); };
  QVERIFY2(std::any_of(checked.findings.begin(), checked.findings.end(), begins),
           qPrintable(checked.findings.join('\n')));
  QVERIFY(checked.findings.filter("cannot be read").size() <= 1);  // what comes after it is read all the same
  QVERIFY2(checked.summary.endsWith(QString("findings: %1").arg(checked.findings.size())), qPrintable(checked.summary));
}

// What a column of the plan "Gate A" is set to, and what is said of it. Without a checksum, as an older program wrote
// it.
void StoreCareTest::PlaysAndChangesNoDamagedPlan_data() {
  QTest::addColumn<QString>("set");
  QTest::addColumn<QString>("fault");
  const auto add = [](const char* name, const QString& set, const char* fault) {
    QTest::newRow(name) << set + (set.contains("checksum") ? "" : ", checksum = ''") << fault;
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
  add("another camera", "pages = replace(pages, '1002', '1003'), checksum = checksum",
      "its content is not what was saved");
  add("another time", "begin_time = '03:00:00', checksum = checksum", "its content is not what was saved");
  add("suddenly automatic", "auto_run = 1, checksum = checksum", "its content is not what was saved");
}

void StoreCareTest::PlaysAndChangesNoDamagedPlan() {
  QFETCH(QString, set);
  QFETCH(QString, fault);
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const std::string plan = ann.Plan("Gate A");
  auto move = ann.Unchanged(plan);
  move.parent_index_code = "-1";
  fixture.RunPastTheStore("UPDATE plan SET " + set + " WHERE name = 'Gate A'");
  const QString line = QString("The plan \"Gate A\" (%1) is damaged: %2.").arg(QString::fromStdString(plan), fault);
  QCOMPARE(QString::fromStdString(ann.Detail(plan).error_info), line);
  QVERIFY(ann.Detail(plan).pages.empty());
  for (auto* pages : {&move.pages, static_cast<std::list<view::PlanPage>*>(nullptr)}) {
    if (pages == nullptr) {
      move.pages.clear();  // what is left of it, as a mover hands it on
    }
    QCOMPARE(ann.Update(move), line);
  }
  QCOMPARE(ann.Share(plan, "2"), line);
  QVERIFY(Check(fixture.Url()).findings.contains(line));
  QCOMPARE(ann.Plans(ann.Group("-1", "Gates")),
           QStringList{"Gate A@" + QString::fromStdString(ann.Group("-1", "Gates"))});
  QCOMPARE(ann.SetDefaultView(plan, 16000), QString());
  QCOMPARE(ann.DeletePlan(plan), QString());
  QCOMPARE(Check(fixture.Url()).findings, QStringList());
}

void StoreCareTest::LeavesForeignDatabasesAlone_data() {
  QTest::addColumn<QStringList>("statements");
  QTest::newRow("other tables") << QStringList{"CREATE TABLE recipes (name TEXT)"};
  QTest::newRow("a view alone") << QStringList{"CREATE VIEW recipes AS SELECT 1 AS one"};
  QTest::newRow("a table of the same name")
      << QStringList{"CREATE TABLE store_info (shop TEXT)", "INSERT INTO store_info VALUES ('x')"};
  QTest::newRow("and the same columns") << QStringList{"CREATE TABLE store_info (name TEXT PRIMARY KEY, value TEXT)",
                                                       "INSERT INTO store_info VALUES ('version', '1')"};
  QTest::newRow("and much alike") << QStringList{"CREATE TABLE store_info (name TEXT PRIMARY KEY, value TEXT)",
                                                 "INSERT INTO store_info VALUES ('version', '2'), ('station_id', 'x')",
                                                 "CREATE TABLE plan (code INTEGER)",
                                                 "CREATE TABLE counter (name TEXT)"};
  if (CStoreFixture::OnPostgres()) {
    QTest::newRow("in a schema of their own")
        << QStringList{"CREATE SCHEMA kitchen", "CREATE TABLE kitchen.recipes (n TEXT)"};
  }
}

void StoreCareTest::LeavesForeignDatabasesAlone() {
  QFETCH(QStringList, statements);
  CStoreFixture fixture;
  for (const QString& statement : statements) {
    fixture.RunPastTheStore(statement);
  }
  const auto things = [&fixture] {
    return fixture.ReadPastTheStore(CStoreFixture::OnPostgres() ? "SELECT count(*) FROM pg_class"
                                                                : "SELECT count(*) FROM sqlite_master");
  };
  const QString before = things();
  for (int attempt = 0; attempt < 2; ++attempt) {
    QString error;
    QVERIFY(!TarnHost::CPlanStore::Open(fixture.options, &error));
    QVERIFY2(error.endsWith(" is not a plan store."), qPrintable(error));
    QCOMPARE(things(), before);
  }
  const Checked checked = Check(fixture.Url());
  QVERIFY2(!checked.done && checked.error.endsWith(" is not a plan store."), qPrintable(checked.error));
}

void StoreCareTest::CopiesAStoreThatIsInUse() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  QCOMPARE(ann.AddPlan("-1", "Still in the log"), QString());
  QString error;
  const QString copy = QFileInfo(fixture.File()).path() + "/copy of it.db";
  if (CStoreFixture::OnPostgres()) {
    QVERIFY(!StoreCare::BackUp(fixture.Url(), "/tmp/none.db", &error) && error.contains("server"));
    return;
  }
  const int locks = LocksOn(fixture.File());
  QVERIFY2(StoreCare::BackUp(fixture.Url(), copy, &error), qPrintable(error));
  QVERIFY2(locks > 0 && LocksOn(fixture.File()) == locks, "the client's locks have gone");
  QCOMPARE(ann.AddPlan("-1", "Later"), QString());
  QCOMPARE(QFileInfo(copy).dir().entryList({"copy*"}), QStringList{"copy of it.db"});
  QCOMPARE(Check("sqlite:" + copy).findings, QStringList());
  fixture.options.url = "sqlite:" + copy;
  const CClient other(fixture.Open());
  QVERIFY(other.Plans("-1").contains("Still in the log@-1") && !other.Plans("-1").contains("Later@-1"));
  QCOMPARE(other->StationId(), ann->StationId());
  QCOMPARE(other.AddPlan("-1", "In the copy alone"), QString());
}

void StoreCareTest::WritesNoCopyOverAnything() {
  if (CStoreFixture::OnPostgres()) {
    QSKIP("A server's store has no file.");
  }
  CStoreFixture fixture;
  fixture.Open().reset();
  const QDir folder = QFileInfo(fixture.File()).dir();
  QFile taken(folder.filePath("taken"));
  QVERIFY(taken.open(QIODevice::WriteOnly));
  QVERIFY(QFile::link("/nowhere", folder.filePath("dangling")));
  const QStringList before = folder.entryList(QDir::Files | QDir::System);
  const auto refuses = [&](const QString& url, const QString& copy, const char* reason) {
    QString error;
    return !StoreCare::BackUp(url, copy, &error) && error.contains(reason) && !error.contains('\n');
  };
  QVERIFY(refuses(fixture.Url(), folder.filePath("taken"), "exists already"));
  QVERIFY(refuses(fixture.Url(), folder.filePath("dangling"), "exists already"));
  QVERIFY(refuses(fixture.Url(), fixture.File(), "exists already"));
  QVERIFY(refuses(fixture.Url(), "/proc/none/copy.db", "cannot be made"));
  QVERIFY(refuses("sqlite:" + folder.filePath("taken"), folder.filePath("new"), "is empty"));
  QVERIFY(refuses("sqlite:" + folder.filePath("missing"), folder.filePath("new"), "cannot be read"));
  QCOMPARE(folder.entryList(QDir::Files | QDir::System), before);
  QCOMPARE(taken.size(), qint64(0));
}

QTEST_GUILESS_MAIN(StoreCareTest)
#include "store_care_test.moc"
