#include <QDir>
#include <QFile>
#include <QtTest>
#include <atomic>
#include <memory>

#include <sys/stat.h>

#include "TarnHost/store_care.h"
#include "TarnHost/store_copies.h"
#include "cold_site.h"
#include "notice_recorder.h"

using namespace StoreTest;
using TarnHost::LogInOutcome;
using TarnHost::StoreCopies;
using TarnHost::StoreTrouble;

namespace {

constexpr int kCloseMs = 3000, kHour = 3600, kMostEnds = 5, kLooks = 8;

int ModeOf(const QString& path) {
  struct stat state {};
  return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? int(state.st_mode & 07777) : -1;
}

}  // namespace

/// A desk that starts while its server is away: what it keeps for that, and how it goes on.
class StoreColdTest : public CColdTest {
  Q_OBJECT
 private Q_SLOTS:
  void KeepsWhatItsUserSees_data() { Accounts(); }
  void KeepsWhatItsUserSees();
  void FollowsWhatChanges_data() { Accounts(); }
  void FollowsWhatChanges();
  void ShowsTheCopyAndGoesOver_data() { Accounts(); }
  void ShowsTheCopyAndGoesOver();
  void MixesNoSites();
  void ReadsPlansFromTheCopyWhenLostLater_data() { Accounts(); }
  void ReadsPlansFromTheCopyWhenLostLater();
  void ReadsPlansFromTheCopyWhileTheServerHangs();
  void SaysWhenItWasLastTrue();
  void WritesWhatIsOwedAtTheEnd();

 private:
  /// Of a desk whose clock shows `hours` more than now; so many seconds later than now the copy was true.
  TarnHost::PlanStoreOptions AtHour(const std::shared_ptr<std::atomic<int>>& hours) {
    auto options = OptionsOf("cid", true);
    options.now = [hours, begin = begin_] { return begin.addSecs(kHour * *hours); };
    options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
    return options;
  }
  /// Each look at the store asks for the time twice.
  static TarnHost::PlanStoreOptions Counting(TarnHost::PlanStoreOptions options,
                                             const std::shared_ptr<std::atomic<int>>& looks) {
    options.now = [looks, now = options.now] {
      ++*looks;
      return now();
    };
    return options;
  }
  qint64 CopyMoment() const {
    return InCopy("SELECT value FROM store_info WHERE name = 'copy_at'").toLongLong() - begin_.toSecsSinceEpoch();
  }

  const QDateTime begin_ = QDateTime::currentDateTime();
};

void StoreColdTest::KeepsWhatItsUserSees() {
  QFETCH(bool, roles);
  const std::string gate = ann_.Plan("Gate B");
  auto named = ann_.Unchanged(gate);
  named.pages.front().windows.front().resource_name = "camera of North";
  QCOMPARE(ann_.Update(named), QString());
  Keep(As("cid"), roles);
  QCOMPARE(CopiedPlans(), QString("Gate A, Top"));
  QCOMPARE(InCopy("SELECT group_concat(name) FROM (SELECT name FROM plan_group ORDER BY name)"),
           QString("Common,Gates"));
  QCOMPARE(ModeOf(File()), 0600);
  QCOMPARE(ModeOf(Folder()), 0700);
  QCOMPARE(QDir(Folder()).entryList(QDir::Files | QDir::Hidden).size(), 1);
  const QByteArray bytes = BytesOf(File());
  QVERIFY(bytes.contains("Gate A") && bytes.contains("rtsp://cameras.example/3"));
  for (const char* hidden : {"Gate B", "North", "Ann's", "Bob's", "camera of North", kSecret, kLogin, kHidden}) {
    QVERIFY2(!bytes.contains(hidden), hidden);
  }
  QStringList findings;
  QString summary, error;
  QVERIFY2(TarnHost::StoreCare::Check("sqlite:" + File(), &findings, &summary, &error), qPrintable(error));
  QCOMPARE(findings.filter("damaged"), QStringList());
}

// The file is written on, not made again; and what the user sees no more is not to be found in it.
void StoreColdTest::FollowsWhatChanges() {
  QFETCH(bool, roles);
  QVERIFY(QDir().mkpath(Folder()) && ::chmod(QFile::encodeName(Folder()).constData(), 0755) == 0);
  const CClient desk = Online(As("cid"), roles);
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kColdWaitMs);
  QCOMPARE(ModeOf(Folder()), 0755);  // which others may have their own use for
  struct stat before {
  }, after{};
  QCOMPARE(::stat(QFile::encodeName(File()).constData(), &before), 0);
  const std::string gates = ann_.Group("-1", "Gates");
  std::string group, plan;
  QCOMPARE(ann_.AddGroup("-1", "Passing", &group), QString());
  QCOMPARE(ann_.AddPlan(group, "In passing", &plan), QString());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Renamed", "-1")), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, In passing, Renamed"), kColdWaitMs);
  std::string error;
  QVERIFY2(desk->SetFavoriteCamera("1003", true, &error), error.c_str());
  QTRY_COMPARE_WITH_TIMEOUT(InCopy("SELECT camera_id FROM favorite_camera"), QString("1003"), kColdWaitMs);
  QString said, refusal;
  QVERIFY(TarnHost::StoreCare::LimitGroup(fixture_->Url(), "Passing", QStringList{"Guards"}, &said, &refusal));
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Renamed"), kColdWaitMs);
  QVERIFY(!BytesOf(File()).contains("In passing"));
  QVERIFY(TarnHost::StoreCare::LimitGroup(fixture_->Url(), "Passing", QStringList(), &said, &refusal));
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, In passing, Renamed"), kColdWaitMs);
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("In passing, Renamed"), kColdWaitMs);
  QCOMPARE(::stat(QFile::encodeName(File()).constData(), &after), 0);
  QCOMPARE(quint64(after.st_ino), quint64(before.st_ino));
}

void StoreColdTest::ShowsTheCopyAndGoesOver() {
  QFETCH(bool, roles);
  const std::string gate = ann_.Plan("Gate A");
  {
    const CClient desk = Online(As("cid"), roles);
    QCOMPARE(desk.SetDefaultView(gate, kPlanType), QString());
    QTRY_COMPARE_WITH_TIMEOUT(InCopy("SELECT code FROM default_view"), QString::fromStdString(gate), kColdWaitMs);
  }
  line_->Cut();
  const CClient desk = Cold(As("cid"), roles);
  QTRY_VERIFY(LastTrouble() == StoreTrouble::kNoAnswerYet);
  QVERIFY(desk->CopyMoment().secsTo(QDateTime::currentDateTime()) < 60);
  QCOMPARE(desk.Plans("-1"), QStringList{"Top@-1"});
  QCOMPARE(desk.DefaultView(), gate);
  for (const auto& detail : {desk.Detail(gate), desk.DetailAtOnce(gate)}) {
    QCOMPARE(detail.name, std::string("Gate A"));
    QCOMPARE(detail.pages.size(), size_t(2));
  }
  QCOMPARE(desk.DetailAtOnce("", 1).name, std::string("Top"));  // starts by itself
  QCOMPARE(desk.Search("gate", 0), QStringList{"Gate A@Gates"});
  TarnHost::CameraAccessList access;
  std::string error;
  QVERIFY2(desk->GetCameraAccess({"1001", "1002", "1003"}, access, &error), error.c_str());
  for (const TarnHost::CameraAccess& camera : access.cameras) {
    QVERIFY(camera.user.empty() && camera.secret.IsEmpty());
    QCOMPARE(camera.needs_store, camera.index_code != "1003");
  }
  QVERIFY(desk.AddPlan("-1", "Not now").contains("plan store"));
  CRecorder recorder(desk, {"root"}), cameras(desk, {});
  cameras.Watch(TarnHost::kCameraResource, TarnHost::kCameraResourceCode);
  std::vector<std::shared_future<bool>> answers;  // whether a camera needs the store, asked with each notice
  cameras.then = [&] {
    answers.push_back(std::async(std::launch::async, [desk] {
                        TarnHost::CameraAccessList read;
                        std::string why_not;
                        return !desk->GetCameraAccess({"1001"}, read, &why_not) || read.cameras.front().needs_store;
                      }).share());
  };
  // Meanwhile the site goes on.
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Renamed", "-1")), QString());
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
  QTRY_COMPARE(desk.Plans("-1"), QStringList{"Renamed@-1"});
  QVERIFY(!desk->CopyMoment().isValid());
  QTRY_COMPARE(recorder.lines, QStringList{kWholeTree});
  QTRY_VERIFY(!answers.empty() && !answers.back().get());
  QVERIFY2(desk->GetCameraAccess({"1001"}, access, &error), error.c_str());
  QVERIFY(!access.cameras.front().needs_store && access.cameras.front().secret == TarnHost::CSecret(kSecret));
  QCOMPARE(desk.AddPlan("-1", "Now"), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Now, Renamed"), kColdWaitMs);
  QCOMPARE(asked_, 0);
}

void StoreColdTest::MixesNoSites() {
  Keep(As("cid"), false);
  line_->Cut();
  const CClient desk = Cold(As("cid"), false);
  fixture_->RunPastTheStore("UPDATE store_info SET value = 'another' WHERE name = 'station_id'");
  fixture_->RunPastTheStore("UPDATE plan SET name = 'Of another site'");
  fixture_->RunPastTheStore("UPDATE store_info SET value = '2' WHERE name = 'version'");  // would be moved on
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kOtherSite, kColdWaitMs);
  QVERIFY(!desk.AddPlan("-1", "Nowhere").isEmpty());
  QCOMPARE(desk.Plans("-1"), QStringList{"Top@-1"});
  QCOMPARE(fixture_->ReadPastTheStore("SELECT count(*) FROM plan WHERE name = 'Nowhere'"), QString("0"));
  QCOMPARE(fixture_->ReadPastTheStore("SELECT value FROM store_info WHERE name = 'version'"), QString("2"));
  QVERIFY(CopiedPlans().contains("Top"));
}

// Nothing older than what the tree shows, and of cameras nothing that would pass for all that the store knows.
void StoreColdTest::ReadsPlansFromTheCopyWhenLostLater() {
  QFETCH(bool, roles);
  const std::string gate = ann_.Plan("Gate A");
  std::string other;
  QCOMPARE(ann_.AddPlan("-1", "Other", &other), QString());
  const CClient desk = Online(As("cid"), roles);
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Other, Top"), kColdWaitMs);
  const QByteArray older = BytesOf(File());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(other, "Renamed", "-1")), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Renamed, Top"), kColdWaitMs);
  QTRY_COMPARE(desk.Plans("-1"), (QStringList{"Top@-1", "Renamed@-1"}));
  line_->Cut();
  QVERIFY(Write(File(), older));
  QTRY_COMPARE_WITH_TIMEOUT(desk.Detail(gate).name, std::string("Gate A"), kColdWaitMs);
  QCOMPARE(desk.DetailAtOnce(gate).pages.size(), size_t(2));
  QVERIFY(!desk.Detail(other).error_info.empty());
  TarnHost::CameraAccessList access;
  std::string error;
  const auto reads = [&](const std::vector<std::string>& cameras) {
    return desk->GetCameraAccess(cameras, access, &error);
  };
  QTRY_VERIFY2_WITH_TIMEOUT(reads({"1001", "1003"}), error.c_str(), kColdWaitMs);
  QVERIFY(access.cameras.front().needs_store && access.cameras.front().secret.IsEmpty());
  QVERIFY(!access.cameras.back().needs_store);
  QVERIFY(!reads({"1003", "1099"}));  // new since then, it may be
  ptz_plugin_protocol::GetPresetResponse presets;
  QVERIFY(desk->GetPresets({"1001"}, presets));
  QCOMPARE(presets.presets.size(), size_t(2));
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(desk.Detail(other).name, std::string("Renamed"), kColdWaitMs);
  QTRY_VERIFY(reads({"1001"}) && !access.cameras.front().needs_store);
}

void StoreColdTest::ReadsPlansFromTheCopyWhileTheServerHangs() {
  Keep(As("cid"), true);
  auto options = OptionsOf("cid", true);
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  const CClient desk(OpenAs(options, As("cid")));
  const std::string gate = ann_.Plan("Gate A");
  line_->Silence();
  QTRY_VERIFY(LastTrouble() == StoreTrouble::kNotAnswering);
  QElapsedTimer clock;
  clock.start();
  QCOMPARE(desk.Detail(gate).name, std::string("Gate A"));
  QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

void StoreColdTest::SaysWhenItWasLastTrue() {
  const auto hours = std::make_shared<std::atomic<int>>(0), looks = std::make_shared<std::atomic<int>>(0);
  const CClient desk(OpenAs(Counting(AtHour(hours), looks), As("cid")));
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kColdWaitMs);
  const QString change = InCopy("SELECT value FROM store_info WHERE name = 'copy_change'");
  *hours = 1;
  QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(kHour), kColdWaitMs);
  QCOMPARE(InCopy("SELECT value FROM store_info WHERE name = 'copy_change'"), change);
  // What stands in no copy is no reason to write one.
  const auto written = [this] { return QFileInfo(File()).lastModified(); };
  const QDateTime before = written();
  view::AddPlanLogResponseParam answer;
  QVERIFY(desk->AddPlanLog({}, answer));
  const int looked = *looks;
  QTRY_VERIFY(*looks > looked + kLooks);
  QCOMPARE(written(), before);
  std::string error;
  QVERIFY(desk->SetFavoriteCamera("1003", true, &error));
  QTRY_VERIFY_WITH_TIMEOUT(written() != before, kColdWaitMs);
  // A copy that is not the one that was written is made again.
  QVERIFY(QFile::remove(File()));
  *hours = 2;
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kColdWaitMs);
  QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(2 * kHour), kColdWaitMs);
  line_->Silence();
  QTRY_VERIFY(LastTrouble() == StoreTrouble::kNotAnswering);
  *hours = 3;
  desk.Leave();
  QCOMPARE(CopyMoment(), qint64(2 * kHour));
}

void StoreColdTest::WritesWhatIsOwedAtTheEnd() {
  const auto hours = std::make_shared<std::atomic<int>>(0), looks = std::make_shared<std::atomic<int>>(0);
  auto options = Counting(AtHour(hours), looks);
  options.copy_pause = std::chrono::seconds(6);
  const auto work = [&](int hour) {
    *hours = hour;
    CClient desk(OpenAs(options, As("cid")));
    [&] { QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(hour * kHour), kColdWaitMs); }();  // written in this run
    return desk;
  };
  {
    const CClient desk = work(0);
    *hours = 1;
    const int before = *looks;
    QTRY_VERIFY(*looks > before + 4);
    QCOMPARE(CopyMoment(), qint64(0));  // the next moment is not due yet
  }
  QCOMPARE(CopyMoment(), qint64(kHour));
  // A busy machine may take longer than an end may: what came last is in the copy after one of a few.
  std::string added;
  QString last;
  int rounds = 0;
  for (; rounds < kMostEnds && (last.isEmpty() || !CopiedPlans().contains(last)); ++rounds) {
    const CClient desk = work(2 + rounds);
    last = QStringLiteral("Added %1").arg(rounds);
    QCOMPARE(ann_.AddPlan("-1", last.toStdString(), &added), QString());
  }
  QVERIFY2(CopiedPlans().contains(last), qPrintable(CopiedPlans()));
  // What the store does not answer any more is not waited for.
  QElapsedTimer clock;
  {
    const CClient desk = work(2 + rounds);
    line_->Silence();
    QCOMPARE(ann_.AddPlan("-1", "Too late", &added), QString());
    clock.start();
  }
  QVERIFY2(clock.elapsed() < kCloseMs, qPrintable(QString::number(clock.elapsed())));
  QVERIFY2(!CopiedPlans().contains("Too late"), qPrintable(CopiedPlans()));
}

QTEST_GUILESS_MAIN(StoreColdTest)
#include "store_cold_test.moc"
