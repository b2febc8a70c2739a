#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>
#include <thread>

#include "store_fixture.h"

using namespace StoreTest;

namespace {

QByteArray Content(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void Overwrite(const QString& name, const QByteArray& content) {
  QFile file(name);
  QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  QCOMPARE(file.write(content), qint64(content.size()));
}

void RunSql(const QString& name, const QStringList& statements) {
  {
    QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "spoil");
    database.setDatabaseName(name);
    QVERIFY(database.open());
    for (const QString& statement : statements) {
      QVERIFY(QSqlQuery(database).exec(statement));
    }
  }
  QSqlDatabase::removeDatabase("spoil");
}

// A sound store's file, spoilt.
void Spoil(const QString& name, const QString& how) {
  QByteArray bytes = Content(name);
  if (how == "empty") {
    Overwrite(name, {});
  } else if (how == "text") {
    Overwrite(name, "Dear diary, these are not plans.\n");
  } else if (how == "cut in the header") {
    Overwrite(name, bytes.left(40));
  } else if (how == "cut in the middle") {
    Overwrite(name, bytes.left(bytes.size() / 2));
  } else if (how == "zeroed pages") {
    Overwrite(name, bytes.replace(8192, 16384, QByteArray(16384, '\0')));
  } else if (how == "other database") {
    QVERIFY(QFile::remove(name));
    RunSql(name, {"CREATE TABLE recipes (name TEXT)"});
  } else if (how == "newer") {
    RunSql(name, {"UPDATE store_info SET value = '99' WHERE name = 'version'"});
  }
}

}  // namespace

class StoreFilesTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void RefusesBadFiles_data();
  void RefusesBadFiles();
  void RefusesBadPlaces();
  void LeavesNothingOfAFailedStart();
  void RecoversFromALogThatWasLeft();
  void ReadersAndWritersGoTogether();
  void ReadsWaitForNoWrite();
  void BringsAnOlderStoreAlong();
};

void StoreFilesTest::RefusesBadFiles_data() {
  QTest::addColumn<QString>("text");
  QTest::newRow("empty") << "The plan store %1 is empty: its content was lost.";
  QTest::newRow("text") << "%1 is not a plan store.";
  QTest::newRow("other database") << "%1 is not a plan store.";
  QTest::newRow("cut in the header") << "The plan store %1 is damaged: it is cut off.";
  QTest::newRow("cut in the middle") << "The plan store %1 is damaged.";
  QTest::newRow("zeroed pages") << "The plan store %1 is damaged.";
  QTest::newRow("newer") << "The plan store %1 was made by a newer version (99; this program knows 3).";
}

void StoreFilesTest::RefusesBadFiles() {
  QFETCH(QString, text);
  CStoreFixture fixture;
  fixture.Open().reset();
  Spoil(fixture.File(), QTest::currentDataTag());
  const QByteArray before = Content(fixture.File());
  for (int attempt = 0; attempt < 2; ++attempt) {
    QString error;
    QVERIFY(!TarnHost::CPlanStore::Open(fixture.options, &error));
    QCOMPARE(error, text.arg(fixture.File()));
    QVERIFY(Content(fixture.File()) == before);
  }
}

void StoreFilesTest::RefusesBadPlaces() {
  CStoreFixture fixture;
  const QString folder = QFileInfo(fixture.File()).path();
  Overwrite(folder + "/file", "x");
  const QStringList urls = {"",
                            "plans.db",
                            "sqlite:",
                            "mysql://host/db",
                            "sqlite:" + folder,
                            "sqlite:" + folder + "/file/plans.db",
                            "sqlite:/proc/no/plans.db"};
  for (const QString& url : urls) {
    fixture.options.url = url;
    QString error;
    QVERIFY2(!TarnHost::CPlanStore::Open(fixture.options, &error), qPrintable(url));
    QVERIFY2(!error.isEmpty() && !error.contains('\n'), qPrintable(error));
  }
  QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"file"});
}

void StoreFilesTest::LeavesNothingOfAFailedStart() {
  CStoreFixture fixture;
  fixture.options.first_content = [] {
    auto site = SmallSite();
    site.plans.back().group = 77;
    return site;
  };
  QString error;
  QVERIFY(!TarnHost::CPlanStore::Open(fixture.options, &error));
  QVERIFY(error.contains("refers to something"));
  QCOMPARE(QFileInfo(fixture.File()).dir().entryList(QDir::Files), QStringList());
  fixture.options.first_content = SmallSite;
  QCOMPARE(CClient(fixture.Open()).Groups("-1").size(), 1);
}

// A copy of the file and its log, as a machine leaves them that lost its power.
void StoreFilesTest::RecoversFromALogThatWasLeft() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  QCOMPARE(ann.AddPlan("-1", "Acknowledged"), QString());
  const QString copy = fixture.File() + "-copy";
  QVERIFY(QFile::copy(fixture.File(), copy));
  QVERIFY(QFile::copy(fixture.File() + "-wal", copy + "-wal"));
  fixture.options.url = "sqlite:" + copy;
  QVERIFY(CClient(fixture.Open()).Plans("-1").contains("Acknowledged@-1"));
}

void StoreFilesTest::ReadersAndWritersGoTogether() {
  CStoreFixture fixture;
  const CClient client(fixture.Open());
  const CClient second(fixture.Open("bob"));
  std::atomic<int> failures{0};
  std::atomic<bool> stop{false};
  const auto write = [&failures](const CClient& by, const std::string& root) {
    const bool may_delete = root == "-2" || by->CheckControlPermission(7);
    for (int number = 0; number < 40; ++number) {
      std::string group, plan;
      failures += !by.AddGroup(root, "Group " + std::to_string(number), &group).isEmpty();
      failures += !by.AddPlan(group, "Plan", &plan).isEmpty();
      failures += by.Detail(plan).name != "Plan";  // a client sees its own change at once
      failures += by.Plans(group).size() != 1;
      if (number % 2 == 0) {
        failures += by.DeletePlan(plan).isEmpty() != may_delete;
      }
    }
  };
  const auto read = [&](const CClient& by) {
    while (!stop) {
      failures += by.Groups("-1").value(0).startsWith('!');
      failures += by.Search("gate", 0).size() != 2;
    }
  };
  std::vector<std::thread> readers, writers;
  readers.emplace_back(read, client);
  readers.emplace_back(read, second);
  writers.emplace_back(write, client, "-1");
  writers.emplace_back(write, client, "-2");
  writers.emplace_back(write, second, "-1");
  writers.emplace_back(write, second, "-2");
  for (std::thread& writer : writers) {
    writer.join();
  }
  stop = true;
  for (std::thread& reader : readers) {
    reader.join();
  }
  QCOMPARE(failures.load(), 0);
  QTRY_COMPARE(client.Groups("-1").size(), 81);
  QTRY_COMPARE(second.Groups("-1").size(), 81);
  QTRY_COMPARE(client.Search("plan", 0).size(), 60);  // the last plan may come a poll after its group
  QTRY_COMPARE(second.Search("plan", 1).size(), 20);
}

// Another program holds the write lock and a change waits for it: plans and the default view still open.
void StoreFilesTest::ReadsWaitForNoWrite() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  std::string plan;
  QCOMPARE(ann.AddPlan("-1", "Gate at night", &plan), QString());
  QCOMPARE(ann.SetDefaultView(plan, 16000), QString());
  std::atomic<bool> written{false};
  std::thread writer;
  {
    QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "holder");
    database.setDatabaseName(fixture.File());
    QVERIFY(database.open());
    QVERIFY(QSqlQuery(database).exec("BEGIN IMMEDIATE"));
    writer = std::thread([&] {
      ann.RenameGroup(ann.Group("-1", "Gates"), "Renamed in the end");
      written = true;
    });
    for (int round = 0; round < 100; ++round) {
      QCOMPARE(ann.Detail(plan).name, std::string("Gate at night"));
      QCOMPARE(ann.DefaultView(), plan);
    }
    QVERIFY(!written);
    QVERIFY(QSqlQuery(database).exec("ROLLBACK"));
  }
  QSqlDatabase::removeDatabase("holder");
  writer.join();
  QVERIFY(ann.Groups("-1").contains("Renamed in the end@-1"));
}

void StoreFilesTest::BringsAnOlderStoreAlong() {
  CStoreFixture fixture;
  fixture.Open().reset();
  RunSql(fixture.File(), {"DROP TABLE favorite_camera", "ALTER TABLE plan DROP COLUMN checksum",
                          "UPDATE store_info SET value = '1' WHERE name = 'version'"});
  const CClient ann(fixture.Open());
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  std::vector<std::string> favorites;
  std::string error;
  QVERIFY(ann->GetCameraTree(regions, cameras, &error) && cameras.size() == 2);
  QVERIFY(ann->SetFavoriteCamera(cameras[0].index_code, true, &error));
  QVERIFY(ann->SetFavoriteCamera(cameras[1].index_code, true, &error));

  // A camera that is taken away meanwhile is no one's favorite any more.
  RunSql(fixture.File(), {"DELETE FROM camera WHERE name = 'Yard camera'"});
  QVERIFY(ann->GetFavoriteCameras(favorites, &error));
  QCOMPARE(favorites, std::vector<std::string>{cameras[0].index_code});
  QVERIFY(ann->GetCameraTree(regions, cameras, &error) && cameras.size() == 1);
}

QTEST_GUILESS_MAIN(StoreFilesTest)
#include "store_files_test.moc"
