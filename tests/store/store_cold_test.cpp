#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtTest>
#include <atomic>
#include <future>
#include <memory>

#include <sys/stat.h>

#include "TarnHost/store_care.h"
#include "TarnHost/store_copies.h"
#include "faulty_line.h"
#include "notice_recorder.h"

using namespace StoreTest;
using TarnHost::LogInOutcome;
using TarnHost::StoreCopies;
using TarnHost::StoreTrouble;

namespace {

constexpr int kWaitMs = 30000, kCloseMs = 3000, kHour = 3600, kMostEnds = 5, kLooks = 8;
constexpr int kSeveralAttemptsMs = 3000;
const char kWord[] = "Kennwort 9", kSecret[] = "camera's own secret", kLogin[] = "camera's own login",
           kHidden[] = "pass=in-the-address";

/// "North", below "Gates", is limited to the guards: bob, who may not configure. "Top" starts by itself, all day.
TarnHost::PlanSite ColdSite() {
  auto site = SmallSite();
  site.users = {{"ann", {5, 6, 7, 8}}, {"bob", {5, 6}}, {"cid", {5}}};
  site.user_groups = {{"Guards", {1}}};
  site.groups[1].audience = {0};
  site.cameras.push_back({"Gate camera", 0, true, {}, {0}});
  site.plans.back().auto_run = true;
  site.plans.back().begin_time = "00:00:00";
  site.plans.back().end_time = "23:59:59";
  site.switches = {{"timed_play", 1}};
  return site;
}

TarnHost::LogInRequest As(const char* user, const char* password = "") {
  return {QString::fromUtf8(user), TarnHost::CSecret(password)};
}

int ModeOf(const QString& path) {
  struct stat state {};
  return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? int(state.st_mode & 07777) : -1;
}

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool Write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

}  // namespace

/// A desk that starts while its server is away: what it keeps for that, and how it goes on. Needs PostgreSQL.
class StoreColdTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void KeepsWhatItsUserSees_data() { Accounts(); }
  void KeepsWhatItsUserSees();
  void FollowsWhatChanges_data() { Accounts(); }
  void FollowsWhatChanges();
  void ShowsTheCopyAndGoesOver_data() { Accounts(); }
  void ShowsTheCopyAndGoesOver();
  void RefusesWhatIsNoCopy_data();
  void RefusesWhatIsNoCopy();
  void TakesBackWhatAPowerCutLeft();
  void IsReadWhileItIsBroughtUp();
  void FollowsAServerThatWasPutBack();
  void MixesNoSites();
  void LocksAfterWrongPasswords();
  void ChangesUsersAtTheirCopies_data() { Accounts(); }
  void ChangesUsersAtTheirCopies();
  void ChangesUsersWhileItTriesToConnect();
  void ConnectsAsWhoHasLoggedInMeanwhile();
  void AsksForTheNewPassword_data() { Accounts(); }
  void AsksForTheNewPassword();
  void AsksARunningDeskForTheNewPassword();
  void ForgetsWhoIsGone();
  void LeavesTheCopiesOfOthers_data();
  void LeavesTheCopiesOfOthers();
  void ReadsPlansFromTheCopyWhenLostLater_data() { Accounts(); }
  void ReadsPlansFromTheCopyWhenLostLater();
  void ReadsPlansFromTheCopyWhileTheServerHangs();
  void SaysWhenItWasLastTrue();
  void WritesWhatIsOwedAtTheEnd();

 private:
  /// Whether the users open the store under their own roles or all under the owner's account.
  static void Accounts() {
    QTest::addColumn<bool>("roles");
    QTest::newRow("under the users' roles") << true;
    QTest::newRow("under the owner's account") << false;
  }
  TarnHost::PlanStoreOptions OptionsOf(const QString& user, bool roles) const {
    auto options = fixture_->options;
    QUrl url(line_->Url());
    url.setUserName(roles ? user : url.userName());
    const QString server = url.host() + ':' + QString::number(url.port());
    options.url = url.toString().replace(server, QStringList(QVector<QString>(servers_, server).toList()).join(','));
    options.copies = Folder();
    options.copy_pause = std::chrono::milliseconds(50);
    return options;
  }
  QString Folder() const { return folder_->filePath("kept/copies"); }
  QString File() const {
    const QDir folder(Folder());
    return folder.filePath(folder.entryList({"*.copy"}, QDir::Files).value(0));
  }
  QString InCopy(const QString& statement) const {
    return QFileInfo(File()).isFile() ? CDirectAccess("sqlite:" + File()).Try(statement) : QString();
  }
  /// As the disk is after a power cut in the midst of a long update.
  static void CutPower(const QString& path) {
    QByteArray file, journal;
    {
      const CDirectAccess copy("sqlite:" + path);
      copy.Run("PRAGMA cache_size = 10");
      copy.Run("BEGIN IMMEDIATE");
      copy.Run("UPDATE plan SET name = 'half'");
      copy.Run(
          "WITH RECURSIVE row(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM row WHERE i < 500)"
          " INSERT INTO plan_log SELECT '', i, hex(zeroblob(1000)), 0, 0 FROM row");
      file = BytesOf(path);
      journal = BytesOf(path + "-journal");
      copy.Run("ROLLBACK");
    }
    QVERIFY(file.contains("half") && !journal.isEmpty() && file.size() > QFileInfo(path).size());
    QVERIFY(Write(path, file) && Write(path + "-journal", journal));
  }
  /// Under the numbers that the site gave last, other changes were made.
  void PutBack(const QString& top) const {
    fixture_->RunPastTheStore("UPDATE change_log SET origin = 'another desk' || seq || origin");
    fixture_->RunPastTheStore(QString("UPDATE plan SET name = '%1', checksum = '%1' WHERE parent_code = -1").arg(top));
    fixture_->RunPastTheStore(QString("UPDATE camera_name SET name = '%1' || number").arg(top));
  }
  QStringList UsersWithCopies() const {
    QStringList users;
    for (const auto& copy : StoreCopies::Of(Folder(), OptionsOf("cid", false).url)) {
      users.append(copy.user);
    }
    users.sort();
    return users;
  }
  QString CopiedPlans() const {
    return InCopy("SELECT group_concat(name, ', ') FROM (SELECT name FROM plan ORDER BY name)");
  }
  CClient Online(const TarnHost::LogInRequest& user, bool roles) const {
    return CClient(OpenAs(OptionsOf(user.user, roles), user));
  }
  /// While the server is away.
  CClient Cold(const TarnHost::LogInRequest& user, bool roles) {
    auto options = OptionsOf(user.user, roles);
    options.shows_of = user.user;
    options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
    options.on_password_asked = [this] { ++asked_; };
    return CClient(OpenAs(options, user));
  }
  static std::shared_ptr<TarnHost::CPlanStore> OpenAs(const TarnHost::PlanStoreOptions& options,
                                                      const TarnHost::LogInRequest& user) {
    QString error;
    auto store = TarnHost::CPlanStore::Open(options, &error);
    if (!store || !store->LogIn(user).IsDone() ||
        !QTest::qWaitFor([&] { return store->IsViewResourceDownFinish(); }, kWaitMs)) {
      qFatal("the store does not get ready: %s", qPrintable(error));
    }
    return store;
  }
  void SetPassword(const QString& user, const char* password) const {
    TarnHost::SiteUsers users;
    QString error;
    TarnHost::StoreCare::ReadUsers(fixture_->Url(), &users, &error);
    TarnHost::SiteUserChanges changes;
    for (const TarnHost::SiteUser& one : users.users) {
      if (one.name == user) {
        changes.users.emplace_back();
        changes.users.back().before = changes.users.back().after = one;
        changes.users.back().password = TarnHost::CSecret(password);
      }
    }
    QVERIFY2(TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error), qPrintable(error));
  }
  /// From here on the server asks these roles for their passwords.
  void AskForPasswords(const QStringList& roles) {
    asked_roles_ = roles;
    for (const QString& role : roles) {
      CDirectAccess(CStoreFixture::SuperuserUrl()).Run("GRANT asks_for_password TO " + role);
    }
  }
  /// Works at the store once, with a password, until there are so many copies.
  void KeepCopy(const TarnHost::LogInRequest& user, bool roles, size_t copies) const {
    auto options = OptionsOf(user.user, roles);
    options.account = roles ? user : TarnHost::LogInRequest();
    const CClient desk(OpenAs(options, user));
    QTRY_COMPARE_WITH_TIMEOUT(StoreCopies::Of(Folder(), options.url).size(), copies, kWaitMs);
  }
  static QString CurrentUser(const CClient& desk) {
    view::GetCurrentUserResponse current;
    return desk->GetCurrentUser({}, current) ? QString::fromStdString(current.user.name) : QString();
  }
  /// Off the GUI thread, as the client does.
  static LogInOutcome LogIn(const CClient& desk, const TarnHost::LogInRequest& user) {
    auto answer = std::async(std::launch::async, [desk, user] { return desk->LogIn(user).outcome; });
    const auto is_there = [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; };
    return QTest::qWaitFor(is_there, kWaitMs) ? answer.get() : LogInOutcome::kUnavailable;
  }
  /// Works at the store once, until the copy has this plan.
  void Keep(const TarnHost::LogInRequest& user, bool roles, const QString& plan = "Top") const {
    const CClient desk = Online(user, roles);
    QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains(plan), kWaitMs);
  }
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
  StoreTrouble LastTrouble() const { return seen_.isEmpty() ? StoreTrouble::kNone : seen_.last(); }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<CFaultyLine> line_;
  QVector<StoreTrouble> seen_;
  int asked_ = 0, servers_ = 1;  // in the address; all of them are the line
  QStringList asked_roles_;
  const QDateTime begin_ = QDateTime::currentDateTime();
};

void StoreColdTest::init() {
  CStoreTest::init();
  if (!CStoreFixture::OnPostgres()) {
    QSKIP("only a server can be away");
  }
  fixture_->options.first_content = ColdSite;
  fixture_->MakeRoles();
  folder_ = std::make_unique<QTemporaryDir>();
  line_ = std::make_unique<CFaultyLine>(QUrl(fixture_->Url()));
  seen_.clear();
  asked_ = 0;
  servers_ = 1;
  const CDirectAccess owner(fixture_->Url());
  owner.Run(QString("INSERT INTO camera_access VALUES (1001, $$%1$$, $$%2$$, '')").arg(kLogin, kSecret));
  owner.Run("UPDATE camera_stream SET url = 'rtsp://cameras.example/1' WHERE camera_id = 1001");
  owner.Run(
      QString("UPDATE camera_stream SET url = 'rtsp://cameras.example/2?%1' WHERE camera_id = 1002").arg(kHidden));
  owner.Run("UPDATE camera_stream SET url = 'rtsp://cameras.example/3' WHERE camera_id = 1003");
}

void StoreColdTest::cleanup() {
  for (const QString& role : std::exchange(asked_roles_, {})) {
    CDirectAccess(CStoreFixture::SuperuserUrl()).Run("REVOKE asks_for_password FROM " + role);
  }
  line_.reset();
  folder_.reset();
  CStoreTest::cleanup();
}

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
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kWaitMs);
  QCOMPARE(ModeOf(Folder()), 0755);  // which others may have their own use for
  struct stat before {
  }, after{};
  QCOMPARE(::stat(QFile::encodeName(File()).constData(), &before), 0);
  const std::string gates = ann_.Group("-1", "Gates");
  std::string group, plan;
  QCOMPARE(ann_.AddGroup("-1", "Passing", &group), QString());
  QCOMPARE(ann_.AddPlan(group, "In passing", &plan), QString());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Renamed", "-1")), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, In passing, Renamed"), kWaitMs);
  std::string error;
  QVERIFY2(desk->SetFavoriteCamera("1003", true, &error), error.c_str());
  QTRY_COMPARE_WITH_TIMEOUT(InCopy("SELECT camera_id FROM favorite_camera"), QString("1003"), kWaitMs);
  QString said, refusal;
  QVERIFY(TarnHost::StoreCare::LimitGroup(fixture_->Url(), "Passing", QStringList{"Guards"}, &said, &refusal));
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Renamed"), kWaitMs);
  QVERIFY(!BytesOf(File()).contains("In passing"));
  QVERIFY(TarnHost::StoreCare::LimitGroup(fixture_->Url(), "Passing", QStringList(), &said, &refusal));
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, In passing, Renamed"), kWaitMs);
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("In passing, Renamed"), kWaitMs);
  QCOMPARE(::stat(QFile::encodeName(File()).constData(), &after), 0);
  QCOMPARE(quint64(after.st_ino), quint64(before.st_ino));
}

void StoreColdTest::ShowsTheCopyAndGoesOver() {
  QFETCH(bool, roles);
  const std::string gate = ann_.Plan("Gate A");
  {
    const CClient desk = Online(As("cid"), roles);
    QCOMPARE(desk.SetDefaultView(gate, kPlanType), QString());
    QTRY_COMPARE_WITH_TIMEOUT(InCopy("SELECT code FROM default_view"), QString::fromStdString(gate), kWaitMs);
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
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QTRY_COMPARE(desk.Plans("-1"), QStringList{"Renamed@-1"});
  QVERIFY(!desk->CopyMoment().isValid());
  QTRY_COMPARE(recorder.lines, QStringList{kWholeTree});
  QTRY_VERIFY(!answers.empty() && !answers.back().get());
  QVERIFY2(desk->GetCameraAccess({"1001"}, access, &error), error.c_str());
  QVERIFY(!access.cameras.front().needs_store && access.cameras.front().secret == TarnHost::CSecret(kSecret));
  QCOMPARE(desk.AddPlan("-1", "Now"), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Now, Renamed"), kWaitMs);
  QCOMPARE(asked_, 0);
}

void StoreColdTest::RefusesWhatIsNoCopy_data() {
  QTest::addColumn<QString>("fault");
  for (const char* fault : {"cut", "empty", "foreign", "newer", "older", "another user's", "no copy", "gone"}) {
    QTest::newRow(fault) << fault;
  }
}

void StoreColdTest::RefusesWhatIsNoCopy() {
  QFETCH(QString, fault);
  Keep(As("cid"), true);
  line_->Cut();
  const QString path = File();
  const QMap<QString, QString> statements = {
      {"newer", "UPDATE store_info SET value = '9999' WHERE name = 'version'"},
      {"older", "UPDATE store_info SET value = '2' WHERE name = 'version'"},
      {"another user's", "UPDATE store_info SET value = 'bob' WHERE name = 'copy_user'"},
      {"no copy", "DELETE FROM store_info WHERE name LIKE 'copy%'"}};
  if (statements.contains(fault)) {
    CDirectAccess("sqlite:" + path).Run(statements.value(fault));
  }
  const QByteArray whole = BytesOf(path);
  if (fault == "cut") {
    QVERIFY(Write(path, whole.left(whole.size() / 2)));
  }
  if (fault == "empty" || fault == "foreign") {
    QVERIFY(Write(path, fault == "empty" ? QByteArray() : QByteArray(5000, 'x')));
  }
  if (fault == "gone") {
    QVERIFY(QFile::remove(path));
  }
  auto options = OptionsOf("cid", true);
  options.shows_of = "cid";
  QString error, why_not;
  QVERIFY(!TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(!error.isEmpty() && !error.contains('\n'), qPrintable(error));
  const auto copies = StoreCopies::Of(Folder(), options.url, &why_not);
  if (fault == "another user's") {  // his, under a name that is another's
    QCOMPARE(copies.size(), size_t(1));
    QVERIFY(StoreCopies::Check(Folder(), options.url, As("bob")).outcome == LogInOutcome::kWrongPassword);
  } else {
    QVERIFY(copies.empty());
    QVERIFY(fault == "gone" || why_not.contains("The copy of the plans") || why_not.contains("no copy"));
  }
  QVERIFY(!StoreCopies::Check(Folder(), options.url, As("cid")).IsDone());
  // The store makes a sound one of it.
  line_->Mend();
  const CClient desk = Online(As("cid"), true);
  const auto is_sound = [&] {
    const auto now = StoreCopies::Of(Folder(), options.url);
    return now.size() == 1 && now.front().user == "cid";
  };
  QTRY_VERIFY_WITH_TIMEOUT(is_sound(), kWaitMs);
}

// The copy is as it was before the update; and what it had then comes into none that is made in its place.
void StoreColdTest::TakesBackWhatAPowerCutLeft() {
  Keep(As("cid"), true);
  const QString path = File();
  CutPower(path);
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Top"));
  CutPower(path);
  QVERIFY(Write(path, QByteArray(5000, 'x')));
  QCOMPARE(UsersWithCopies(), QStringList());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Renamed", "-1")), QString());
  {
    const CClient desk = Online(As("cid"), true);
    QTRY_VERIFY_WITH_TIMEOUT(BytesOf(path).contains("Renamed"), kWaitMs);
  }
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Renamed"));
}

// The store may fall silent in the midst of a long update.
void StoreColdTest::IsReadWhileItIsBroughtUp() {
  Keep(As("cid"), true);
  const CDirectAccess owner(fixture_->Url());
  owner.Run(
      "INSERT INTO plan (code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time,"
      " end_time, cameras, creator, creation_time, revision, changed_by, changed_at, checksum)"
      " SELECT 500000 + n, parent_code, family, owner_id, 'Many ' || n, split_type, page_count, 0, '', '', '',"
      " creator, creation_time, revision, changed_by, changed_at, '' FROM plan, generate_series(1, 400) n"
      " WHERE name = 'Top'");
  owner.Run(
      "INSERT INTO plan_content (code, pages, thumbnail) SELECT code, repeat('x', 20000), '' FROM plan"
      " WHERE code > 500000");
  owner.Run("UPDATE counter SET value = value + 100 WHERE name = 'seq'");
  line_->FailAfter({"LEFT JOIN plan_content", ", 500300"}, CFaultyLine::kSilent);
  const CClient desk = Online(As("cid"), true);
  QTRY_VERIFY_WITH_TIMEOUT(line_->HasFailed(), kWaitMs);
  QCOMPARE(UsersWithCopies(), QStringList{"cid"});
  QCOMPARE(CopiedPlans(), QString("Gate A, Top"));
  QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Many 400"), kWaitMs);
}

// A standby that lagged became the server, or a backup was put back: also while the desk is away.
void StoreColdTest::FollowsAServerThatWasPutBack() {
  std::string added;
  QCOMPARE(ann_.AddPlan("-1", "Lost", &added), QString());
  Keep(As("cid"), true, "Lost");
  PutBack("Put back");
  const CClient desk = Online(As("cid"), true);
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Put back, Put back"), kWaitMs);
  QVERIFY(InCopy("SELECT min(name) FROM camera_name").startsWith("Put back"));
  line_->Cut();
  PutBack("Again");
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Again, Again, Gate A"), kWaitMs);
  QVERIFY(InCopy("SELECT min(name) FROM camera_name").startsWith("Again"));
}

void StoreColdTest::MixesNoSites() {
  Keep(As("cid"), false);
  line_->Cut();
  const CClient desk = Cold(As("cid"), false);
  fixture_->RunPastTheStore("UPDATE store_info SET value = 'another' WHERE name = 'station_id'");
  fixture_->RunPastTheStore("UPDATE plan SET name = 'Of another site'");
  fixture_->RunPastTheStore("UPDATE store_info SET value = '2' WHERE name = 'version'");  // would be moved on
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kOtherSite, kWaitMs);
  QVERIFY(!desk.AddPlan("-1", "Nowhere").isEmpty());
  QCOMPARE(desk.Plans("-1"), QStringList{"Top@-1"});
  QCOMPARE(fixture_->ReadPastTheStore("SELECT count(*) FROM plan WHERE name = 'Nowhere'"), QString("0"));
  QCOMPARE(fixture_->ReadPastTheStore("SELECT value FROM store_info WHERE name = 'version'"), QString("2"));
  QVERIFY(CopiedPlans().contains("Top"));
}

void StoreColdTest::LocksAfterWrongPasswords() {
  SetPassword("cid", kWord);
  Keep(As("cid", kWord), false);
  line_->Cut();
  const QString url = OptionsOf("cid", false).url;
  const auto copies = StoreCopies::Of(Folder(), url);
  QVERIFY(copies.size() == 1 && copies.front().has_password);
  QVERIFY(!BytesOf(File()).contains(kWord));
  const auto check = [&](const char* user, const char* password) {
    return StoreCopies::Check(Folder(), url, As(user, password)).outcome;
  };
  QVERIFY(check("bob", kWord) == LogInOutcome::kWrongPassword);
  QVERIFY(check("cid", kWord) == LogInOutcome::kDone);
  std::vector<std::future<LogInOutcome>> tries;
  for (int wrong = 1; wrong <= 4; ++wrong) {
    tries.push_back(std::async(std::launch::async, [&] { return check("cid", "wrong"); }));
  }
  for (auto& wrong : tries) {
    QVERIFY(wrong.get() == LogInOutcome::kWrongPassword);
  }
  QCOMPARE(InCopy("SELECT wrong_tries FROM account"), QString("4"));  // for the next start, too
  QVERIFY(check("cid", "wrong") == LogInOutcome::kLocked);
  QVERIFY(check("cid", kWord) == LogInOutcome::kLocked);
  auto options = OptionsOf("cid", false);
  options.shows_of = "cid";
  const auto store = TarnHost::CPlanStore::Open(options, nullptr);
  QVERIFY(store && store->HasPassword("cid") && store->HasPassword("bob"));  // of whom this copy knows nothing
  QVERIFY(store->LogIn(As("cid", kWord)).outcome == LogInOutcome::kLocked);
}

// Each is asked for the password of his own copy, and goes over to the store as himself.
void StoreColdTest::ChangesUsersAtTheirCopies() {
  QFETCH(bool, roles);
  SetPassword("bob", kWord);
  SetPassword("cid", "cid's");
  if (roles) {
    AskForPasswords({"bob", "cid"});
  }
  KeepCopy(As("bob", kWord), roles, 1);
  KeepCopy(As("cid", "cid's"), roles, 2);
  line_->Cut();
  const CClient desk = Cold(As("cid", "cid's"), roles);
  QVERIFY(desk->HasPassword("bob"));
  QVERIFY(desk.Plan("Bob's gate").empty() && desk.Plan("Gate B").empty());
  for (const char* word : {"", "wrong", "cid's"}) {
    QVERIFY(desk->CheckPassword(As("bob", word)).outcome == LogInOutcome::kWrongPassword);
    QVERIFY(LogIn(desk, As("bob", word)) == LogInOutcome::kWrongPassword);
    QVERIFY(desk->CheckPassword(As("bob", kWord)).IsDone());  // and the wrong ones are forgotten
  }
  QVERIFY(desk->CheckPassword(As("ann")).outcome == LogInOutcome::kWrongPassword);  // she has none here
  QCOMPARE(CurrentUser(desk), QString("cid"));
  QVERIFY(LogIn(desk, As("bob", kWord)) == LogInOutcome::kDone);
  QCOMPARE(CurrentUser(desk), QString("bob"));
  QVERIFY(!desk.Plan("Bob's gate").empty() && !desk.Plan("Gate B").empty());
  QVERIFY(desk->CheckPassword(As("bob", kWord)).IsDone() && desk->CheckPassword(As("cid", "cid's")).IsDone());
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QCOMPARE(CurrentUser(desk), QString("bob"));
  std::string plan;
  QTRY_COMPARE(desk.AddPlan("-2", "Of bob", &plan), QString());
  QCOMPARE(fixture_->ReadPastTheStore("SELECT creator FROM plan WHERE code = " + QString::fromStdString(plan)),
           QString("bob"));
  QCOMPARE(asked_, 0);
}

// Which takes longer than other calls may, at several servers that keep silent. All the while the desk shows a copy.
void StoreColdTest::ChangesUsersWhileItTriesToConnect() {
  servers_ = 3;
  Keep(As("bob"), true, "Bob's gate");
  KeepCopy(As("cid"), true, 2);
  line_->Silence();
  const int calls = line_->Calls();
  const CClient desk = Cold(As("cid"), true);
  QTRY_VERIFY(line_->Calls() > calls);
  QVERIFY(LogIn(desk, As("bob")) == LogInOutcome::kDone);
  QCOMPARE(CurrentUser(desk), QString("bob"));
  QVERIFY(!desk.Plan("Bob's gate").empty());
  QTRY_COMPARE(seen_, QVector<StoreTrouble>(2, StoreTrouble::kNoAnswerYet));
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QCOMPARE(CurrentUser(desk), QString("bob"));
}

// A connection that was begun under the address' own account is not his, though it comes about in the end.
void StoreColdTest::ConnectsAsWhoHasLoggedInMeanwhile() {
  Keep(As("bob"), true, "Bob's gate");
  auto options = OptionsOf("cid", true);
  options.shows_of = "bob";
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  line_->Silence();
  const int calls = line_->Calls();
  const CClient desk(TarnHost::CPlanStore::Open(options, nullptr));
  QTRY_VERIFY(line_->Calls() > calls);
  QVERIFY(desk->LogIn(As("bob")).IsDone());
  line_->Mend();
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QCOMPARE(CurrentUser(desk), QString("bob"));
  std::string plan;
  QTRY_COMPARE(desk.AddPlan("-2", "Of bob", &plan), QString());
  QCOMPARE(fixture_->ReadPastTheStore("SELECT creator FROM plan WHERE code = " + QString::fromStdString(plan)),
           QString("bob"));
}

void StoreColdTest::AsksForTheNewPassword() {
  QFETCH(bool, roles);
  SetPassword("cid", kWord);
  if (roles) {
    AskForPasswords({"cid"});
  }
  const auto old = As("cid", kWord);
  const auto options = [&] {
    auto desk = OptionsOf("cid", roles);
    desk.account = roles ? old : TarnHost::LogInRequest();
    return desk;
  };
  {
    const CClient desk(OpenAs(options(), old));
    QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Top"), kWaitMs);
  }
  QVERIFY(!BytesOf(File()).contains(kWord));
  line_->Cut();
  const CClient desk = Cold(old, roles);
  QVERIFY(desk->CheckPassword(old).IsDone());
  SetPassword("cid", "new");
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(asked_, 1, kWaitMs);
  QCOMPARE(desk.Plans("-1"), QStringList{"Top@-1"});  // nothing is lost
  QVERIFY(!desk->CheckPassword(old).IsDone());
  if (roles) {
    QVERIFY(LastTrouble() == StoreTrouble::kPasswordRefused);
    QVERIFY(!desk.AddPlan("-1", "Not yet").isEmpty());
  }
  line_->Cut();
  QTRY_VERIFY(desk->CheckPassword(old).outcome == LogInOutcome::kUnavailable);  // nor does the line's end make it good
  line_->Mend();
  QTRY_VERIFY(desk->CheckPassword(old).outcome == LogInOutcome::kWrongPassword);
  QVERIFY(desk->CheckPassword(As("cid", "new")).IsDone());
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QTRY_COMPARE(desk.AddPlan("-1", "Again"), QString());
  QCOMPARE(asked_, 1);
}

// Each attempt under an account that is refused counts where accounts are locked for that: also one that only reads.
void StoreColdTest::AsksARunningDeskForTheNewPassword() {
  SetPassword("cid", kWord);
  AskForPasswords({"cid"});
  auto options = OptionsOf("cid", true);
  options.account = As("cid", kWord);
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  options.on_password_asked = [this] { ++asked_; };
  const CClient desk(OpenAs(options, options.account));
  line_->Cut();
  SetPassword("cid", "new");
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(asked_, 1, kWaitMs);
  const int calls = line_->Calls();
  const auto reads = [&] {
    TarnHost::CameraAccessList access;
    std::string error;
    return std::async(std::launch::async, [&] { return desk->GetCameraAccess({"1099"}, access, &error); }).get();
  };
  QVERIFY(!reads());
  QVERIFY(!QTest::qWaitFor([&] { return line_->Calls() != calls; }, kSeveralAttemptsMs));
  QVERIFY(desk->CheckPassword(options.account).outcome == LogInOutcome::kWrongPassword);
  QVERIFY(desk->CheckPassword(As("cid", "new")).IsDone());
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kWaitMs);
  QTRY_COMPARE(desk.SetDefaultView(desk.Plan("Gate A"), kPlanType), QString());
  QCOMPARE(asked_, 1);
}

void StoreColdTest::ForgetsWhoIsGone() {
  Keep(As("cid"), false);
  const QString of_cid = File();
  TarnHost::SiteUsers users;
  QString error;
  QVERIFY(TarnHost::StoreCare::ReadUsers(fixture_->Url(), &users, &error));
  TarnHost::SiteUserChanges changes;
  changes.users.emplace_back();
  QCOMPARE(users.users.back().name, QString("cid"));
  changes.users.back().before = users.users.back();
  QVERIFY2(TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error), qPrintable(error));
  const CClient desk = Online(As("bob"), false);
  QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(of_cid), kWaitMs);
  QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Bob's gate"), kWaitMs);
  StoreCopies::Remove(Folder(), OptionsOf("bob", false).url);
  QVERIFY(!StoreCopies::HasAny(Folder(), OptionsOf("bob", false).url));
}

void StoreColdTest::LeavesTheCopiesOfOthers_data() {
  QTest::addColumn<bool>("stays");
  QTest::newRow("after a power cut") << true;
  QTest::newRow("of a newer program") << true;
  QTest::newRow("damaged") << false;
}

void StoreColdTest::LeavesTheCopiesOfOthers() {
  QFETCH(bool, stays);
  Keep(As("cid"), false);
  const QString of_cid = File(), row = QTest::currentDataTag();
  if (row == "after a power cut") {
    CutPower(of_cid);
  } else if (row == "damaged") {
    QVERIFY(Write(of_cid, QByteArray(5000, 'x')));
  } else {
    CDirectAccess("sqlite:" + of_cid).Run("UPDATE store_info SET value = '9999' WHERE name = 'version'");
  }
  const CClient desk = Online(As("bob"), false);
  QTRY_VERIFY_WITH_TIMEOUT(UsersWithCopies().contains("bob"), kWaitMs);
  if (stays) {
    desk.Leave();  // by then it has looked at them
  }
  QTRY_COMPARE_WITH_TIMEOUT(QFile::exists(of_cid), stays, kWaitMs);
  QCOMPARE(UsersWithCopies().contains("cid"), row == "after a power cut");
}

// Nothing older than what the tree shows, and of cameras nothing that would pass for all that the store knows.
void StoreColdTest::ReadsPlansFromTheCopyWhenLostLater() {
  QFETCH(bool, roles);
  const std::string gate = ann_.Plan("Gate A");
  std::string other;
  QCOMPARE(ann_.AddPlan("-1", "Other", &other), QString());
  const CClient desk = Online(As("cid"), roles);
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Other, Top"), kWaitMs);
  const QByteArray older = BytesOf(File());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(other, "Renamed", "-1")), QString());
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Renamed, Top"), kWaitMs);
  QTRY_COMPARE(desk.Plans("-1"), (QStringList{"Top@-1", "Renamed@-1"}));
  line_->Cut();
  QVERIFY(Write(File(), older));
  QTRY_COMPARE_WITH_TIMEOUT(desk.Detail(gate).name, std::string("Gate A"), kWaitMs);
  QCOMPARE(desk.DetailAtOnce(gate).pages.size(), size_t(2));
  QVERIFY(!desk.Detail(other).error_info.empty());
  TarnHost::CameraAccessList access;
  std::string error;
  const auto reads = [&](const std::vector<std::string>& cameras) {
    return desk->GetCameraAccess(cameras, access, &error);
  };
  QTRY_VERIFY2_WITH_TIMEOUT(reads({"1001", "1003"}), error.c_str(), kWaitMs);
  QVERIFY(access.cameras.front().needs_store && access.cameras.front().secret.IsEmpty());
  QVERIFY(!access.cameras.back().needs_store);
  QVERIFY(!reads({"1003", "1099"}));  // new since then, it may be
  ptz_plugin_protocol::GetPresetResponse presets;
  QVERIFY(desk->GetPresets({"1001"}, presets));
  QCOMPARE(presets.presets.size(), size_t(2));
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(desk.Detail(other).name, std::string("Renamed"), kWaitMs);
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
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kWaitMs);
  const QString change = InCopy("SELECT value FROM store_info WHERE name = 'copy_change'");
  *hours = 1;
  QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(kHour), kWaitMs);
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
  QTRY_VERIFY_WITH_TIMEOUT(written() != before, kWaitMs);
  // A copy that is not the one that was written is made again.
  QVERIFY(QFile::remove(File()));
  *hours = 2;
  QTRY_COMPARE_WITH_TIMEOUT(CopiedPlans(), QString("Gate A, Top"), kWaitMs);
  QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(2 * kHour), kWaitMs);
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
    [&] { QTRY_COMPARE_WITH_TIMEOUT(CopyMoment(), qint64(hour * kHour), kWaitMs); }();  // written in this run
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
