#include <QtTest>
#include <future>

#include "TarnHost/store_copies.h"
#include "cold_site.h"

using namespace StoreTest;
using TarnHost::LogInOutcome;
using TarnHost::StoreCopies;
using TarnHost::StoreTrouble;

namespace {

constexpr int kSeveralAttemptsMs = 3000;
const char kWord[] = "Kennwort 9";

}  // namespace

/// Who works at a desk whose server is away: passwords, tries, changes of user, and as whom it goes on.
class StoreColdUsersTest : public CColdTest {
  Q_OBJECT
 private Q_SLOTS:
  void LocksAfterWrongPasswords();
  void ChangesUsersAtTheirCopies_data() { Accounts(); }
  void ChangesUsersAtTheirCopies();
  void ChangesUsersWhileItTriesToConnect();
  void ConnectsAsWhoHasLoggedInMeanwhile();
  void AsksForTheNewPassword_data() { Accounts(); }
  void AsksForTheNewPassword();
  void AsksARunningDeskForTheNewPassword();
  void PausesWhileTheSharedAccountIsRefused();

 private:
  static QString CurrentUser(const CClient& desk) {
    view::GetCurrentUserResponse current;
    return desk->GetCurrentUser({}, current) ? QString::fromStdString(current.user.name) : QString();
  }
  /// Off the GUI thread, as the client does.
  static LogInOutcome LogIn(const CClient& desk, const TarnHost::LogInRequest& user) {
    auto answer = std::async(std::launch::async, [desk, user] { return desk->LogIn(user).outcome; });
    const auto is_there = [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; };
    return QTest::qWaitFor(is_there, kColdWaitMs) ? answer.get() : LogInOutcome::kUnavailable;
  }
  /// The server is back: what the desk writes is this user's.
  void GoesOnAs(const CClient& desk, const QString& user) const {
    line_->Mend();
    QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
    QCOMPARE(CurrentUser(desk), user);
    std::string plan;
    QTRY_COMPARE(desk.AddPlan("-2", "Of " + user, &plan), QString());
    QCOMPARE(fixture_->ReadPastTheStore("SELECT creator FROM plan WHERE code = " + QString::fromStdString(plan)), user);
  }
};

void StoreColdUsersTest::LocksAfterWrongPasswords() {
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
void StoreColdUsersTest::ChangesUsersAtTheirCopies() {
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
  GoesOnAs(desk, "bob");
  QCOMPARE(asked_, 0);
}

// Which takes longer than other calls may, at several servers that keep silent. All the while the desk shows a copy.
void StoreColdUsersTest::ChangesUsersWhileItTriesToConnect() {
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
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
  QCOMPARE(CurrentUser(desk), QString("bob"));
}

// A connection that was begun under the address' own account is not his, though it comes about in the end.
void StoreColdUsersTest::ConnectsAsWhoHasLoggedInMeanwhile() {
  Keep(As("bob"), true, "Bob's gate");
  auto options = OptionsOf("cid", true);
  options.shows_of = "bob";
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  line_->Silence();
  const int calls = line_->Calls();
  const CClient desk(TarnHost::CPlanStore::Open(options, nullptr));
  QTRY_VERIFY(line_->Calls() > calls);
  QVERIFY(desk->LogIn(As("bob")).IsDone());
  GoesOnAs(desk, "bob");
}

void StoreColdUsersTest::AsksForTheNewPassword() {
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
    QTRY_VERIFY_WITH_TIMEOUT(CopiedPlans().contains("Top"), kColdWaitMs);
  }
  QVERIFY(!BytesOf(File()).contains(kWord));
  line_->Cut();
  const CClient desk = Cold(old, roles);
  QVERIFY(desk->CheckPassword(old).IsDone());
  SetPassword("cid", "new");
  line_->Mend();
  QTRY_COMPARE_WITH_TIMEOUT(asked_, 1, kColdWaitMs);
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
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
  QTRY_COMPARE(desk.AddPlan("-1", "Again"), QString());
  QCOMPARE(asked_, 1);
}

// Each attempt under an account that is refused counts where accounts are locked for that: also one that only reads.
void StoreColdUsersTest::AsksARunningDeskForTheNewPassword() {
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
  QTRY_COMPARE_WITH_TIMEOUT(asked_, 1, kColdWaitMs);
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
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
  QTRY_COMPARE(desk.SetDefaultView(desk.Plan("Gate A"), kPlanType), QString());
  QCOMPARE(asked_, 1);
}

// Many desks at once would otherwise keep a server busy, and lock the account where that is done.
void StoreColdUsersTest::PausesWhileTheSharedAccountIsRefused() {
  auto options = OptionsOf("cid", false);
  options.on_trouble = [this](StoreTrouble trouble, const QString&) { seen_.append(trouble); };
  options.on_password_asked = [this] { ++asked_; };
  const CClient desk(OpenAs(options, As("cid")));
  const auto let_in = [owner = QUrl(options.url).userName()](const char* may) {
    CDirectAccess(CStoreFixture::SuperuserUrl()).Run(QString("ALTER ROLE %1 %2").arg(owner, may));
  };
  const auto put_right = qScopeGuard([&] { let_in("LOGIN"); });
  line_->Cut();
  let_in("NOLOGIN");
  QTRY_VERIFY(LastTrouble() != StoreTrouble::kNone);
  line_->Mend();
  const int calls = line_->Calls();
  const int one_attempt = 2;  // with and without encryption
  QTRY_VERIFY(line_->Calls() > calls);
  QVERIFY(!QTest::qWaitFor([&] { return line_->Calls() > calls + one_attempt; }, kSeveralAttemptsMs));
  QVERIFY(!desk.AddPlan("-1", "Not yet").isEmpty());
  let_in("LOGIN");
  QTRY_VERIFY_WITH_TIMEOUT(LastTrouble() == StoreTrouble::kNone, kColdWaitMs);
  QTRY_COMPARE(desk.AddPlan("-1", "Again"), QString());
  QCOMPARE(asked_, 0);
}

QTEST_GUILESS_MAIN(StoreColdUsersTest)
#include "store_cold_users_test.moc"
