// What happens to a store's file behind the program's back: bits that flip, files that go, disks that are full.
#include <QProcess>
#include <QtTest>
#include <future>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TarnHost/store_care.h"
#include "older_store.h"
#include "store_file.h"
#include "store_fixture.h"

using namespace StoreTest;
using TarnHost::StoreCare;
using TarnHost::StoreTrouble;

namespace {

constexpr int kFlips = 100;  // of each kind
constexpr int kAnswerMs = 30000;

/// What plays of a plan, and when.
std::string Played(const view::GetPlanDetailResponse& plan) {
  return plan.start_time + plan.end_time + (plan.auto_run ? "automatic " : " ") + TarnTest::Words(plan.pages);
}

/// What a tree shows of it.
std::string Shown(const view::GetPlanDetailResponse& plan) {
  return plan.name + '@' + plan.group_index_code;
}

bool CheckFinds(const QString& url) {
  QStringList findings;
  QString summary, error;
  return !StoreCare::Check(url, &findings, &summary, &error) || !findings.isEmpty();
}

}  // namespace

class StoreFaultsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void NoFlippedBitChangesAPlanUnseen();
  void KeepsNothingInAFileThatIsGone_data();
  void KeepsNothingInAFileThatIsGone();
  void GoesOverToTheFileInItsPlace();
  void OpensForReadingWhereNothingCanBeWritten_data();
  void OpensForReadingWhereNothingCanBeWritten();
  void ReportsALockThatRefusedAChangeAsLongAsItHolds();
  void OpensOnAFullDisk_data();
  void OpensOnAFullDisk();
  void IsBroughtAlongWholeOrNotAtAll_data();
  void IsBroughtAlongWholeOrNotAtAll();
  void RemovesItsLeftOversOnly();

 private:
  /// A store with the plan "Before", and the copy of all its content that an administrator has.
  CClient MakeWithBackup();

  QByteArray backup_;
  std::string before_;
};

// Bits in and around the rows of plans, one at a time. Whatever then plays otherwise than before is refused, and what
// a look through the store does not name has not changed anything that is shown of the plan.
void StoreFaultsTest::NoFlippedBitChangesAPlanUnseen() {
  fixture_->options.first_content = TarnHost::MakeDemoSite;
  std::map<std::string, view::GetPlanDetailResponse> plans;  // those that the user sees
  struct Kind {
    int from, length;  // of what is spoilt, around a text of each plan
    QByteArrayList texts = {};
    int unopened = 0, denied = 0, noticed = 0;
  };
  Kind contents{-100, 700}, rows{-300, 400};
  {
    const CClient client(fixture_->Open("operator"));
    for (int code = 100031; code <= 100150; ++code) {
      const auto plan = client.Detail(std::to_string(code));
      if (plan.error_info.empty()) {
        plans[plan.index_code] = plan;
      }
    }
    for (const char* code : {"100031", "100032", "100033", "100040", "100077", "100150"}) {
      const auto text = [&](const char* from) {
        return fixture_->ReadPastTheStore(QString("SELECT %1 WHERE code = %2").arg(from, code)).toUtf8();
      };
      contents.texts << text("pages FROM plan_content");
      rows.texts << text("checksum FROM plan");
    }
  }
  const QByteArray sound = Content(fixture_->File());
  std::mt19937 random(20);
  for (int flip = 0; flip < 2 * kFlips; ++flip) {
    Kind& kind = flip < kFlips ? contents : rows;
    const int at = sound.indexOf(kind.texts[int(random() % unsigned(kind.texts.size()))].left(60));
    QVERIFY(at > 0);
    QByteArray bytes = sound;
    const int place = at + kind.from + int(random() % unsigned(kind.length));
    bytes[place] = char(bytes[place] ^ (1 << (random() % 8)));
    Overwrite(fixture_->File(), bytes);
    if (!fixture_->OpeningError().isEmpty()) {
      ++kind.unopened;
      continue;
    }
    const CClient client(fixture_->Open("operator"));
    bool denied = false, shown_otherwise = false;
    for (const auto& [code, plan] : plans) {
      const auto now = client.Detail(code);
      if (!now.error_info.empty()) {
        denied = true;
        continue;
      }
      QVERIFY2(Played(now) == Played(plan), qPrintable(QString("flip %1 of %2 plays").arg(flip).arg(code.c_str())));
      shown_otherwise |= Shown(now) != Shown(plan);
    }
    if (denied || shown_otherwise) {
      QVERIFY2(CheckFinds(fixture_->Url()), qPrintable(QString("flip %1 is not found").arg(flip)));
      ++kind.noticed;
    }
    kind.denied += denied ? 1 : 0;
  }
  QVERIFY2(contents.denied > kFlips / 2, qPrintable(QString::number(contents.denied)));
  // Of a row only the half is shown of its plan.
  QVERIFY2(rows.unopened + rows.noticed > kFlips / 4,
           qPrintable(QString("%1, %2").arg(rows.unopened).arg(rows.noticed)));
}

CClient StoreFaultsTest::MakeWithBackup() {
  fixture_->options.first_content = TarnHost::MakeDemoSite;
  const CClient client(fixture_->Open("operator"));
  const QString copy = fixture_->File() + ".backup";
  QString error = client.AddPlan("-1", "Before", &before_);
  if (!error.isEmpty() || client.Detail(before_).name != "Before" ||
      !StoreCare::BackUp(fixture_->Url(), copy, &error)) {
    qFatal("no backup: %s", qPrintable(error));
  }
  backup_ = Content(copy);
  return client;
}

void StoreFaultsTest::KeepsNothingInAFileThatIsGone_data() {
  QTest::addColumn<QString>("said");
  QTest::newRow("moved") << "is gone: it was removed or moved away.";
  QTest::newRow("moved, and back beside an obstacle") << "is gone: it was removed or moved away.";
  QTest::newRow("removed") << "is gone: it was removed or moved away.";
  QTest::newRow("emptied") << "content was lost.|cut off while";
  QTest::newRow("cut") << "is damaged.|cut off while";
}

void StoreFaultsTest::KeepsNothingInAFileThatIsGone() {
  const QString how = QTest::currentDataTag();
  QFETCH(QString, said);
  const QRegularExpression text(said.replace(".", "\\."));
  const CClient client = MakeWithBackup();
  const QString file = fixture_->File(), aside = file + ".aside", obstacle = file + "-shm";
  if (how.startsWith("moved")) {
    QVERIFY(QFile::rename(file, aside));
  } else if (how == "removed") {
    QVERIFY(QFile::remove(file));
  } else {
    QCOMPARE(::truncate(QFile::encodeName(file).constData(), how == "cut" ? 20000 : 0), 0);
  }
  QString error;
  const auto add = [&] { return error = client.AddPlan("-1", "Meanwhile"); };
  for (int attempt = 0; attempt < 3; ++attempt) {
    QVERIFY2(add().contains(text) && !error.contains('\n'), qPrintable(error));
  }
  // Not the plan that was just added, which the client may still have in memory.
  const auto read = [&] { return error = QString::fromStdString(client.Detail("100033").error_info); };
  QTRY_VERIFY2(read().contains("The plan store "), qPrintable(error));
  QCOMPARE(QFile::exists(file), how == "emptied" || how == "cut");
  QVERIFY(client.Plans("-1").contains("Before@-1"));  // what is in memory can be looked at
  // Back again.
  if (how == "moved") {
    QVERIFY(QFile::rename(aside, file));
  } else if (how.startsWith("moved")) {
    // What stands in the way may go again, with file and log as they were.
    QTRY_VERIFY(!Content("/proc/self/maps").contains(QFile::encodeName(obstacle)));  // the client has let go of it
    QVERIFY(QFile::remove(obstacle) && QFile::link("/nowhere", obstacle) && QFile::rename(aside, file));
    QTRY_VERIFY2(add().contains("unable to open"), qPrintable(error));
    QVERIFY(QFile::remove(obstacle));
  } else {
    QTRY_VERIFY(how == "removed" || QFileInfo(file + "-wal").size() == 0);  // the client has let go of it
    Overwrite(file, backup_);
  }
  QTRY_COMPARE(client.AddPlan("-1", "After"), QString());
  QCOMPARE(client.Detail(before_).name, std::string("Before"));
  QVERIFY(client.Plans("-1").contains("Before@-1") && client.Plans("-1").contains("After@-1"));
  QCOMPARE(CClient(fixture_->Open("operator")).Plans("-1"), client.Plans("-1"));
  QCOMPARE(fixture_->ReadPastTheStore("PRAGMA integrity_check"), QString("ok"));
}

// What stands there is a store as good as the other. A reader that was quicker than the client's own look would lay the
// old log over the new content.
void StoreFaultsTest::GoesOverToTheFileInItsPlace() {
  const QString replaced = "was replaced while it was open.";
  const CClient client = MakeWithBackup();
  const QByteArray file = QFile::encodeName(fixture_->File());
  QCOMPARE(::rename((file + ".backup").constData(), file.constData()), 0);
  for (int attempt = 0; attempt < 2; ++attempt) {
    const auto now = client.Detail(before_);
    const QString error = QString::fromStdString(now.error_info);
    QVERIFY2(error.isEmpty() ? now.name == "Before" : error.endsWith(replaced), qPrintable(error));
  }
  const QString first = client.AddPlan("-1", "Meanwhile");
  QVERIFY2(first.isEmpty() || first.endsWith(replaced), qPrintable(first));
  QTRY_COMPARE(client.AddPlan("-1", "After"), QString());
  const QStringList plans = client.Plans("-1");
  QCOMPARE(plans.contains("Meanwhile@-1"), first.isEmpty());
  QVERIFY(plans.contains("Before@-1") && plans.contains("After@-1"));
  QCOMPARE(CClient(fixture_->Open("operator")).Plans("-1"), plans);
  QCOMPARE(fixture_->ReadPastTheStore("PRAGMA integrity_check"), QString("ok"));
}

void StoreFaultsTest::OpensForReadingWhereNothingCanBeWritten_data() {
  QTest::addColumn<QString>("said");
  QTest::newRow("file") << "The plan store %1 is read-only.";
  QTest::newRow("folder") << "The plan store %1 is in a read-only folder.";
}

void StoreFaultsTest::OpensForReadingWhereNothingCanBeWritten() {
  QFETCH(QString, said);
  fixture_->Make();
  const bool file_alone = QByteArray(QTest::currentDataTag()) == "file";
  const QByteArray target = QFile::encodeName(file_alone ? fixture_->File() : QFileInfo(fixture_->File()).path());
  const QByteArray before = Content(fixture_->File());
  const QString text = said.arg(fixture_->File());
  FollowTroubles({StoreTrouble::kReadOnly});
  QCOMPARE(::chmod(target.constData(), file_alone ? 0400 : 0500), 0);
  QCOMPARE(ann_.Detail(ann_.Plan("Gate A")).pages.size(), size_t(2));
  QCOMPARE(ann_.Groups("-1"), QStringList{"Gates@-1"});
  QTRY_COMPARE(troubles_, QStringList{text});  // before anything is changed
  for (int attempt = 0; attempt < 2; ++attempt) {
    QCOMPARE(ann_.AddPlan("-1", "x"), text);
  }
  QVERIFY(Content(fixture_->File()) == before);
  QCOMPARE(::chmod(target.constData(), file_alone ? 0600 : 0700), 0);
  QTRY_COMPARE(troubles_, (QStringList{text, QString()}));
  QCOMPARE(ann_.AddPlan("-1", "x"), QString());  // and goes on once it may
  ann_.Leave();
  QCOMPARE(ann_.Plans("-1").filter("x@-1").size(), 1);
}

void StoreFaultsTest::ReportsALockThatRefusedAChangeAsLongAsItHolds() {
  FollowTroubles({StoreTrouble::kLocked});
  QCOMPARE(ann_.Groups("-1").size(), 1);
  fixture_->options.on_trouble = nullptr;
  const QString locked = "The plan store " + fixture_->File() + " is locked by another program.";
  {
    const CWritersHold hold(*fixture_);
    auto write = std::async(std::launch::async, [this] { return ann_.AddPlan("-1", "x"); });
    QTRY_COMPARE_WITH_TIMEOUT(troubles_, QStringList{locked}, kAnswerMs);
    QCOMPARE(write.get(), locked);
  }
  QTRY_COMPARE(troubles_, (QStringList{locked, QString()}));  // without another change of hers
  QCOMPARE(ann_.AddPlan("-1", "x"), QString());
  QTRY_VERIFY(bob_.Plans("-1").contains("x@-1"));
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
  const QString folder = QFileInfo(fixture_->File()).path();
  if (mounted && ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=1m") != 0) {
    QSKIP("Only a user who may mount can fill a disk.");
  }
  fixture_->Make();
  if (older) {
    SetBack(*fixture_, 3);
  }
  QFile filler(folder + "/filler");
  if (mounted) {
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) == 4096) {
    }
  }
  QProcess client;
  client.start(STORE_CLIENT, {fixture_->Url(), "read", mounted ? "-1" : "0"});
  const bool ended = client.waitForFinished(kAnswerMs);
  filler.remove();
  const bool again = ann_.AddPlan("-1", "Room again").isEmpty();
  ann_.Leave();
  if (mounted) {
    ::umount2(QFile::encodeName(folder).constData(), MNT_DETACH);
  }
  QVERIFY(ended && again);
  QCOMPARE(client.exitStatus(), QProcess::NormalExit);
  QCOMPARE(client.exitCode(), older ? 2 : 0);  // it would have to be brought along first
  QCOMPARE(QString(client.readAllStandardOutput()), QString(older ? "" : "Gates@-1\nTop@-1\n"));
  QCOMPARE(QString(client.readAllStandardError()),
           "The plan store " + fixture_->File() +
               " can only be read: no file can be written beside it. Is the disk full?\n");
}

void StoreFaultsTest::IsBroughtAlongWholeOrNotAtAll_data() {
  QTest::addColumn<bool>("killed");
  QTest::newRow("killed") << true;
  QTest::newRow("no room") << false;
}

// An older store that is too large to be brought along in an instant.
void StoreFaultsTest::IsBroughtAlongWholeOrNotAtAll() {
  QFETCH(bool, killed);
  constexpr int kPlans = 1500;
  fixture_->options.first_content = [] {
    auto site = SmallSite();
    site.plans.front().thumbnail = std::string(14000, 'p');
    site.plans.resize(kPlans, site.plans.front());
    return site;
  };
  const std::string plan = ann_.Plan("Gate A");
  const std::string played = Played(ann_.Detail(plan));
  ann_.Leave();
  SetBack(*fixture_, 5);
  const QString log = fixture_->File() + "-wal";
  QProcess client;
  const qint64 room = killed ? -1 : QFileInfo(fixture_->File()).size() / 2;
  client.start(STORE_CLIENT, {fixture_->Url(), "read", QString::number(room)});
  if (killed) {
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(log).size() > 1000000 || client.state() == QProcess::NotRunning, kAnswerMs);
    client.kill();
  }
  QVERIFY(client.waitForFinished(kAnswerMs));
  const bool brought = fixture_->ReadPastTheStore("SELECT value FROM store_info WHERE name = 'version'") != "5";
  QVERIFY(killed || (!brought && client.exitCode() == 2 && !client.readAllStandardError().isEmpty()));
  QCOMPARE(fixture_->ReadPastTheStore(brought ? "SELECT count(*) FROM plan_content" : "SELECT count(pages) FROM plan"),
           QString::number(kPlans));
  QVERIFY(Played(ann_.Detail(plan)) == played);
  ann_.Leave();
  QVERIFY(!CheckFinds(fixture_->Url()));
}

void StoreFaultsTest::RemovesItsLeftOversOnly() {
  fixture_->Make();
  const QString file = fixture_->File(), left = file + ".new-" + QString(32, 'a'),
                held = file + ".new-" + QString(32, 'b'), young = file + ".new-" + QString(32, 'c'),
                orphan = file + ".new-" + QString(32, 'd') + "-wal";
  const QStringList foreign = {file + ".new-notes", file + ".new-" + QString(32, 'A'),
                               file + ".new-" + QString(31, 'a'), left + ".bak",
                               QFileInfo(file).path() + "/other.db.new-" + QString(32, 'a')};
  for (const QString& name : QStringList{left, left + "-wal", left + "-shm", held, held + "-wal", orphan} + foreign) {
    Overwrite(name, "x");
    const timespec long_ago[] = {{1000000000, 0}, {1000000000, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(name).constData(), long_ago, 0), 0);
  }
  Overwrite(young, "x");
  const int hold = ::open(QFile::encodeName(held).constData(), O_RDONLY);
  QCOMPARE(::flock(hold, LOCK_EX), 0);
  fixture_->Make();
  for (const QString& name : {left, left + "-wal", left + "-shm", orphan}) {
    QVERIFY2(!QFile::exists(name), qPrintable(name));
  }
  for (const QString& name : QStringList{held, held + "-wal", young, file} + foreign) {
    QVERIFY2(QFile::exists(name), qPrintable(name));
  }
  ::close(hold);
  fixture_->Make();
  QVERIFY(!QFile::exists(held) && !QFile::exists(held + "-wal") && QFile::exists(young));
}

QTEST_GUILESS_MAIN(StoreFaultsTest)
#include "store_faults_test.moc"
