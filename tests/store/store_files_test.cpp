#include <QtTest>
#include <thread>

#include "store_file.h"
#include "store_fixture.h"

using namespace StoreTest;

/// What a store finds under the name of its file, and how several use one file.
class StoreFilesTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void RefusesBadFiles();
  void RefusesBadPlaces();
  void LeavesNothingOfAFailedStart();
  void ReadersAndWritersGoTogether();
  void ReadsWaitForNoWrite();
  void SaysThatItIsLocked();
  void ReadsNoContentForTheTree();
};

namespace {

/// By the whole process, from files.
qint64 BytesRead() {
  const QByteArray key = "rchar: ";
  const QByteArray counts = Content("/proc/self/io");
  return counts.mid(counts.indexOf(key) + key.size()).split('\n').front().toLongLong();
}

}  // namespace

void StoreFilesTest::RefusesBadFiles() {
  fixture_->Make();
  const QString file = fixture_->File();
  const QByteArray sound = Content(file);
  fixture_->RunPastTheStore("UPDATE store_info SET value = '99' WHERE name = 'version'");
  const QByteArray newer = Content(file);
  QByteArray zeroed = sound;
  zeroed.replace(8192, 16384, QByteArray(16384, '\0'));
  const QString too_new = "The plan store %1 was made by a newer version (99; this program knows " +
                          QString::number(TarnHost::CPlanStore::LayoutVersion()) + ").";
  const std::pair<QByteArray, QString> rows[] = {{"", "The plan store %1 is empty: its content was lost."},
                                                 {"Dear diary, these are not plans.\n", "%1 is not a plan store."},
                                                 {sound.left(40), "The plan store %1 is damaged: it is cut off."},
                                                 {sound.left(sound.size() / 2), "The plan store %1 is damaged."},
                                                 {zeroed, "The plan store %1 is damaged."},
                                                 {newer, too_new}};
  for (const auto& [content, text] : rows) {
    Overwrite(file, content);
    for (int attempt = 0; attempt < 2; ++attempt) {
      QCOMPARE(fixture_->OpeningError(), text.arg(file));
      QVERIFY2(Content(file) == content, qPrintable(text));
    }
  }
}

void StoreFilesTest::RefusesBadPlaces() {
  const QString folder = QFileInfo(fixture_->File()).path();
  Overwrite(folder + "/file", "x");
  for (const QString& url :
       {QString(), QString("plans.db"), QString("sqlite:"), QString("mysql://host/db"), "sqlite:" + folder,
        "sqlite:" + folder + "/file/plans.db", QString("sqlite:/proc/no/plans.db")}) {
    fixture_->options.url = url;
    const QString error = fixture_->OpeningError();
    QVERIFY2(!error.isEmpty() && !error.contains('\n'), qPrintable(url + ": " + error));
  }
  QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"file"});
}

void StoreFilesTest::LeavesNothingOfAFailedStart() {
  auto site = SmallSite();
  fixture_->options.first_content = [&site] { return site; };
  site.plans.back().group = 77;
  QVERIFY(fixture_->OpeningError().contains("refers to something"));
  site.plans.back().group = -1;
  site.plans.back().family = 7;
  QVERIFY(fixture_->OpeningError().contains("no family 7"));
  QCOMPARE(QFileInfo(fixture_->File()).dir().entryList(QDir::Files), QStringList());
  fixture_->options.first_content = SmallSite;
  QCOMPARE(ann_.Groups("-1").size(), 1);
}

void StoreFilesTest::ReadersAndWritersGoTogether() {
  QVERIFY(ann_->IsViewResourceDownFinish() && bob_->IsViewResourceDownFinish());
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
  for (const CClient& client : {ann_, bob_}) {
    readers.emplace_back(read, client);
    writers.emplace_back(write, client, "-1");
    writers.emplace_back(write, client, "-2");
  }
  for (std::thread& writer : writers) {
    writer.join();
  }
  stop = true;
  for (std::thread& reader : readers) {
    reader.join();
  }
  QCOMPARE(failures.load(), 0);
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Groups("-1").size(), 81);
    QTRY_COMPARE(client.Search("plan", 0).size(), 60);  // the last plan may come a poll after its group
    QTRY_COMPARE(client.Search("plan", 1).size(), 20);
  }
}

// Another program holds the write lock and a change waits for it: plans and the default view still open.
void StoreFilesTest::ReadsWaitForNoWrite() {
  const std::string plan = ann_.Plan("Gate A"), gates = ann_.Group("-1", "Gates");
  QCOMPARE(ann_.SetDefaultView(plan, kPlanType), QString());
  std::atomic<bool> written{false};
  std::thread writer;
  {
    const CWritersHold hold(*fixture_);
    writer = std::thread([&] {
      ann_.RenameGroup(gates, "Renamed in the end");
      written = true;
    });
    for (int round = 0; round < 100; ++round) {
      QCOMPARE(ann_.Detail(plan).name, std::string("Gate A"));
      QCOMPARE(ann_.DefaultView(), plan);
    }
    QVERIFY(!written);
  }
  writer.join();
  QCOMPARE(ann_.Groups("-1"), QStringList{"Renamed in the end@-1"});
}

// By a transaction that does not end, and by a program that keeps the whole file to itself.
void StoreFilesTest::SaysThatItIsLocked() {
  fixture_->Make();
  for (const char* mode : {"NORMAL", "EXCLUSIVE"}) {
    const CDirectAccess holder(fixture_->Url());
    holder.Run(QString("PRAGMA locking_mode = ") + mode);
    holder.Run("BEGIN EXCLUSIVE");
    holder.Run("UPDATE counter SET value = value WHERE name = 'seq'");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(fixture_->OpeningError(), "The plan store " + fixture_->File() + " is locked by another program.");
    QVERIFY(clock.elapsed() < 15000);
  }
  QCOMPARE(ann_.Groups("-1").size(), 1);
}

// Of a store with thumbnails, which is a hundred times its tree, less than a tenth.
void StoreFilesTest::ReadsNoContentForTheTree() {
  constexpr int kThumbnailBytes = 2000000;
  fixture_->Make();
  fixture_->RunPastTheStore(QString("UPDATE plan_content SET thumbnail = randomblob(%1)").arg(kThumbnailBytes));
  const qint64 before = BytesRead();
  QCOMPARE(ann_.Search("gate", 0).size(), 2);
  const qint64 after = BytesRead();
  QVERIFY(after > before);
  QVERIFY2(10 * (after - before) < QFileInfo(fixture_->File()).size(), qPrintable(QString::number(after - before)));
  ann_.Detail(ann_.Plan("Gate A"));
  QVERIFY(BytesRead() - after > kThumbnailBytes);  // the content of a plan that is asked for is seen to be read
}

QTEST_GUILESS_MAIN(StoreFilesTest)
#include "store_files_test.moc"
