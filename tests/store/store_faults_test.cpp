// What happens to a store's file behind the program's back: bits that flip, files that go, disks that are full.
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TarnHost/store_care.h"
#include "store_fixture.h"

using namespace StoreTest;
using TarnHost::StoreCare;

namespace {

constexpr int kFlips = 160;
constexpr int kAnswerMs = 30000;

QByteArray Content(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

// In the same file, so that whoever has it open sees it.
void Overwrite(const QString& name, const QByteArray& content) {
  QFile file(name);
  QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
  QCOMPARE(file.write(content), qint64(content.size()));
}

QString Text(const view::GetPlanDetailResponse& plan) {
  QStringList text{QString::fromStdString(plan.start_time + plan.end_time), plan.auto_run ? "automatic" : ""};
  for (const view::PlanPage& page : plan.pages) {
    text << QString("%1 %2 %3 %4")
                .arg(page.page_no)
                .arg(page.split_type)
                .arg(page.dwell_seconds)
                .arg(page.extra.c_str());
    text << QString::fromStdString(page.name);
    for (const view::PlanWindow& window : page.windows) {
      text << QString("%1 %2 %3 %4")
                  .arg(window.window_no)
                  .arg(window.content_kind)
                  .arg(window.stream_type)
                  .arg(window.preset_no);
      text << QString::fromStdString(window.resource_code + '/' + window.resource_name + window.extra);
    }
  }
  return text.join('|');
}

bool CheckFinds(const QString& url, QString* error) {
  QStringList findings;
  QString summary;
  return !StoreCare::Check(url, &findings, &summary, error) || !findings.isEmpty();
}

}  // namespace

class StoreFaultsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void NoFlippedBitChangesAPlanUnseen();
  void KeepsNothingInAFileThatIsGone_data();
  void KeepsNothingInAFileThatIsGone();
  void OpensForReadingWhereNothingCanBeWritten_data();
  void OpensForReadingWhereNothingCanBeWritten();
  void OpensOnAFullDisk_data();
  void OpensOnAFullDisk();
  void RemovesItsLeftOversOnly();
};

// Bits in and around the rows of plans, one at a time. Whatever then plays otherwise than before is refused, and what
// a look through the store does not name has not changed anything that is shown of the plan.
void StoreFaultsTest::NoFlippedBitChangesAPlanUnseen() {
  CStoreFixture fixture;
  fixture.options.first_content = TarnHost::MakeDemoSite;
  QMap<int, QString> played, listed;
  QByteArrayList texts;
  {
    const CClient client(fixture.Open("operator"));
    for (int code = 100031; code <= 100150; ++code) {
      const auto plan = client.Detail(std::to_string(code));
      played[code] = plan.error_info.empty() ? Text(plan) : "not visible";
      listed[code] = QString::fromStdString(plan.name + '@' + plan.group_index_code);
    }
    for (const char* code : {"100031", "100032", "100033", "100040", "100077", "100150"}) {
      texts << fixture.ReadPastTheStore(QString("SELECT pages FROM plan WHERE code = %1").arg(code)).toUtf8();
    }
  }
  const QByteArray sound = Content(fixture.File());
  std::mt19937 random(20);
  int refused = 0, unread = 0, harmless = 0;
  for (int flip = 0; flip < kFlips; ++flip) {
    const QByteArray& text = texts[int(random() % unsigned(texts.size()))];
    const int at = sound.indexOf(text.left(60));
    QVERIFY(at > 0);
    QByteArray bytes = sound;
    const int place = at - 100 + int(random() % 700U);
    bytes[place] = char(bytes[place] ^ (1 << (random() % 8)));
    Overwrite(fixture.File(), bytes);
    QString error;
    const auto store = TarnHost::CPlanStore::Open(fixture.options, &error);
    if (!store) {
      ++unread;
      continue;
    }
    QVERIFY(store->LogIn("operator", &error));
    QTRY_VERIFY(store->IsViewResourceDownFinish());
    const CClient client(store);
    bool denied = false, shown_otherwise = false;
    for (auto plan = played.cbegin(); plan != played.cend(); ++plan) {
      const auto now = client.Detail(std::to_string(plan.key()));
      denied = denied || (!now.error_info.empty() && plan.value() != "not visible");
      if (now.error_info.empty() && plan.value() != "not visible") {
        QVERIFY2(Text(now) == plan.value(), qPrintable(QString("flip %1 of %2 plays").arg(flip).arg(plan.key())));
        shown_otherwise |= QString::fromStdString(now.name + '@' + now.group_index_code) != listed[plan.key()];
      }
    }
    if (denied || shown_otherwise) {
      QVERIFY2(CheckFinds(fixture.Url(), &error), qPrintable(QString("flip %1 is not found").arg(flip)));
    }
    refused += denied ? 1 : 0;
    harmless += denied || shown_otherwise ? 0 : 1;
  }
  qInfo("%d flips: %d plans refused, %d stores refused, %d change nothing that is played or shown", kFlips, refused,
        unread, harmless);
  QVERIFY(refused > kFlips / 2);
}

void StoreFaultsTest::KeepsNothingInAFileThatIsGone_data() {
  QTest::addColumn<QString>("said");
  QTest::newRow("moved") << "is gone: it was removed or moved away.";
  QTest::newRow("moved, and back beside an obstacle") << "is gone: it was removed or moved away.";
  QTest::newRow("removed") << "is gone: it was removed or moved away.";
  QTest::newRow("replaced") << "was replaced while it was open.";
  QTest::newRow("emptied") << "content was lost.|cut off while";
  QTest::newRow("cut") << "is damaged.|cut off while";
}

void StoreFaultsTest::KeepsNothingInAFileThatIsGone() {
  const QString how = QTest::currentDataTag();
  QFETCH(QString, said);
  const QRegularExpression text(said.replace(".", "\\."));
  CStoreFixture fixture;
  fixture.options.first_content = TarnHost::MakeDemoSite;
  const CClient client(fixture.Open("operator"));
  std::string plan;
  QCOMPARE(client.AddPlan("-1", "Before", &plan), QString());
  QCOMPARE(client.Detail(plan).name, std::string("Before"));
  const QString file = fixture.File(), aside = file + ".aside";
  // The copy that an administrator has: everything, also what stands in the log.
  QString error;
  QVERIFY2(StoreCare::BackUp(fixture.Url(), file + ".backup", &error), qPrintable(error));
  const QByteArray content = Content(file + ".backup");
  if (how.startsWith("moved")) {
    QVERIFY(QFile::rename(file, aside));
  } else if (how == "removed") {
    QVERIFY(QFile::remove(file));
  } else if (how == "replaced") {
    QVERIFY(QFile::copy(file + ".backup", aside));
    QCOMPARE(::rename(QFile::encodeName(aside).constData(), QFile::encodeName(file).constData()), 0);
  } else {
    QCOMPARE(::truncate(QFile::encodeName(file).constData(), how == "cut" ? 20000 : 0), 0);
  }
  if (how == "replaced") {
    // A reader that was quicker than the client's own look would lay the old log over the new content.
    for (int attempt = 0; attempt < 2; ++attempt) {
      const auto now = client.Detail(plan);
      error = QString::fromStdString(now.error_info);
      QVERIFY2(error.isEmpty() ? now.name == "Before" : error.contains(text), qPrintable(error));
    }
    // What stands there is a store as good as the other: the client goes over to it.
    const QString first = client.AddPlan("-1", "Meanwhile");
    QVERIFY2(first.isEmpty() || first.contains(text), qPrintable(first));
    QTRY_COMPARE(client.AddPlan("-1", "After"), QString());
    QCOMPARE(fixture.ReadPastTheStore("SELECT count(*) FROM plan WHERE name = 'Meanwhile'").toInt(),
             first.isEmpty() ? 1 : 0);
  } else {
    for (int attempt = 0; attempt < 3; ++attempt) {
      error = client.AddPlan("-1", "Meanwhile");
      QVERIFY2(error.contains(text) && !error.contains('\n'), qPrintable(error));
    }
    QTRY_VERIFY(QString::fromStdString(client.Detail(plan).error_info).contains("The plan store "));
    QCOMPARE(QFile::exists(file), how == "emptied" || how == "cut");
    QVERIFY(client.Plans("-1").contains("Before@-1"));  // what is in memory can be looked at
    // Back again.
    if (how == "moved") {
      QVERIFY(QFile::rename(aside, file));
    } else if (how.startsWith("moved")) {
      // What stands in the way may go again, with file and log as they were.
      QTRY_VERIFY(
          !Content("/proc/self/maps").contains(QFile::encodeName(file + "-shm")));  // the client has let go of it
      QVERIFY(QFile::remove(file + "-shm") && QFile::link("/nowhere", file + "-shm"));
      QVERIFY(QFile::rename(aside, file));
      const auto again = [&] { return error = client.AddPlan("-1", "Meanwhile"); };
      QTRY_VERIFY2(again().contains("unable to open"), qPrintable(error));
      QVERIFY(QFile::remove(file + "-shm"));
    } else {
      QTRY_VERIFY(how == "removed" || QFileInfo(file + "-wal").size() == 0);  // the client has let go of it
      Overwrite(file, content);
    }
    QTRY_COMPARE(client.AddPlan("-1", "After"), QString());
  }
  QCOMPARE(client.Detail(plan).name, std::string("Before"));
  QVERIFY(client.Plans("-1").contains("Before@-1") && client.Plans("-1").contains("After@-1"));
  const CClient other(fixture.Open("operator"));
  QCOMPARE(other.Plans("-1"), client.Plans("-1"));
  QCOMPARE(fixture.ReadPastTheStore("PRAGMA integrity_check"), QString("ok"));
}

void StoreFaultsTest::OpensForReadingWhereNothingCanBeWritten_data() {
  QTest::addColumn<QString>("said");
  QTest::newRow("file") << "The plan store %1 is read-only.";
  QTest::newRow("folder") << "The plan store %1 is in a read-only folder.";
}

void StoreFaultsTest::OpensForReadingWhereNothingCanBeWritten() {
  QFETCH(QString, said);
  CStoreFixture fixture;
  fixture.Open().reset();
  const QString folder = QFileInfo(fixture.File()).path();
  const bool file_alone = QByteArray(QTest::currentDataTag()) == "file";
  const QByteArray target = QFile::encodeName(file_alone ? fixture.File() : folder);
  const QByteArray before = Content(fixture.File());
  QCOMPARE(::chmod(target.constData(), file_alone ? 0400 : 0500), 0);
  {
    const CClient ann(fixture.Open());
    QCOMPARE(ann.Detail(ann.Plan("Gate A")).pages.size(), size_t(2));
    QCOMPARE(ann.Groups("-1"), QStringList{"Gates@-1"});
    for (int attempt = 0; attempt < 2; ++attempt) {
      QCOMPARE(ann.AddPlan("-1", "x"), said.arg(fixture.File()));
    }
    QVERIFY(Content(fixture.File()) == before);
    QCOMPARE(::chmod(target.constData(), file_alone ? 0600 : 0700), 0);
    QCOMPARE(ann.AddPlan("-1", "x"), QString());  // and goes on once it may
    QCOMPARE(ann.Plans("-1").filter("x@-1").size(), 1);
  }
  QVERIFY(CClient(fixture.Open()).Plans("-1").contains("x@-1"));
}

void StoreFaultsTest::OpensOnAFullDisk_data() {
  QTest::addColumn<bool>("mounted");
  QTest::addColumn<bool>("older");
  QTest::newRow("no file may grow") << false << false;
  QTest::newRow("a disk of its own") << true << false;
  QTest::newRow("a store of an older program") << false << true;
}

void StoreFaultsTest::OpensOnAFullDisk() {
  QFETCH(bool, mounted);
  QFETCH(bool, older);
  CStoreFixture fixture;
  const QString folder = QFileInfo(fixture.File()).path();
  if (mounted && ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=1m") != 0) {
    QSKIP("Only a user who may mount can fill a disk.");
  }
  fixture.Open().reset();
  if (older) {
    fixture.RunPastTheStore("ALTER TABLE plan DROP COLUMN checksum");
    fixture.RunPastTheStore("UPDATE store_info SET value = '2' WHERE name = 'version'");
  }
  QString answer, error;
  if (mounted) {
    QFile filler(folder + "/filler");
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) == 4096) {
    }
  }
  QProcess client;
  client.start(STORE_CLIENT, {fixture.Url(), "read", mounted ? "-1" : "0"});
  const bool ended = client.waitForFinished(kAnswerMs);
  answer = QString::fromUtf8(client.readAllStandardOutput());
  error = QString::fromUtf8(client.readAllStandardError());
  if (mounted) {
    QVERIFY(QFile::remove(folder + "/filler"));
  }
  const bool again = CClient(fixture.Open()).AddPlan("-1", "Room again").isEmpty();
  if (mounted) {
    ::umount2(QFile::encodeName(folder).constData(), MNT_DETACH);
  }
  QVERIFY(ended && again);
  QCOMPARE(client.exitStatus(), QProcess::NormalExit);
  QCOMPARE(client.exitCode(), older ? 2 : 0);  // it would have to be brought along first
  QCOMPARE(answer, older ? QString() : QString("Gates@-1\nTop@-1\n"));
  QCOMPARE(error, "The plan store " + fixture.File() +
                      " can only be read: no file can be written beside it. Is the disk full?\n");
}

void StoreFaultsTest::RemovesItsLeftOversOnly() {
  CStoreFixture fixture;
  fixture.Open().reset();
  const QString file = fixture.File(), left = file + ".new-" + QString(32, 'a'),
                held = file + ".new-" + QString(32, 'b'), young = file + ".new-" + QString(32, 'c'),
                orphan = file + ".new-" + QString(32, 'd') + "-wal";
  const QStringList foreign = {file + ".new-notes", file + ".new-" + QString(32, 'A'),
                               file + ".new-" + QString(31, 'a'), file + ".new-" + QString(32, 'a') + ".bak",
                               QFileInfo(file).path() + "/other.db.new-" + QString(32, 'a')};
  const auto make_old = [](const QString& name) {
    Overwrite(name, "x");
    const timespec long_ago[] = {{1000000000, 0}, {1000000000, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(name).constData(), long_ago, 0), 0);
  };
  for (const QString& name : QStringList{left, left + "-wal", left + "-shm", held, held + "-wal", orphan} + foreign) {
    make_old(name);
  }
  Overwrite(young, "x");
  const int hold = ::open(QFile::encodeName(held).constData(), O_RDONLY);
  QCOMPARE(::flock(hold, LOCK_EX), 0);
  fixture.Open().reset();
  for (const QString& name : {left, left + "-wal", left + "-shm", orphan}) {
    QVERIFY2(!QFile::exists(name), qPrintable(name));
  }
  for (const QString& name : QStringList{held, held + "-wal", young, file} + foreign) {
    QVERIFY2(QFile::exists(name), qPrintable(name));
  }
  ::close(hold);
  fixture.Open().reset();
  QVERIFY(!QFile::exists(held) && !QFile::exists(held + "-wal") && QFile::exists(young));
}

QTEST_GUILESS_MAIN(StoreFaultsTest)
#include "store_faults_test.moc"
