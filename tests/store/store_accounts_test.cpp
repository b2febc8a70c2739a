#include <QtTest>
#include <future>

#include "LyraPluginManager/error_kind.h"
#include "TarnHost/store_care.h"
#include "notice_recorder.h"

using namespace StoreTest;
using TarnHost::CSecret;
using TarnHost::LogInOutcome;
using TarnHost::SiteUser;
using TarnHost::SiteUserChanges;
using TarnHost::SiteUsers;
using TarnHost::StoreCare;

namespace {

constexpr int kConfigure = 8;

TarnHost::PlanSite ConfiguredSite() {
  auto site = SmallSite();
  site.users[0].rights.push_back(kConfigure);
  site.user_groups = {{"Guards", {1}}, {"Visitors", {}}};
  return site;
}

}  // namespace

Q_DECLARE_METATYPE(std::set<int>)

/// Users with passwords, and who may change whom.
class StoreAccountsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void AsksForThePassword();
  void LocksTheNameOverARestart();
  void KeepsWhoIsThereWhileItDoesNotAnswer();
  void AsksForAPasswordThatIsNew();
  void MakesNoLogInThatIsNotWanted();
  void ChangesUsers();
  void RefusesAChange_data();
  void RefusesAChange();
  void RefusesTheSecondOfTwo();
  void ForgetsAUserWithAllThatIsHis();
  void FollowsChangesOfUsers();

 private:
  SiteUsers Users() const {
    SiteUsers users;
    QString error;
    return StoreCare::ReadUsers(fixture_->Url(), &users, &error) ? users : SiteUsers();
  }
  SiteUser User(const QString& name) const {
    const SiteUsers site = Users();
    for (const SiteUser& user : site.users) {
      if (user.name == name) {
        return user;
      }
    }
    return {};
  }
  /// The text of a refusal.
  QString Change(const SiteUserChanges& changes) const {
    QString error;
    return StoreCare::ChangeUsers(fixture_->Url(), changes, &error) ? QString() : error;
  }
  QString Save(const SiteUser& before, const SiteUser& after,
               const std::optional<CSecret>& password = std::nullopt) const {
    SiteUserChanges changes;
    changes.users.push_back({{before, after}, password});
    return Change(changes);
  }
  QString Remove(const QString& name) const {
    SiteUserChanges changes;
    changes.users.push_back({{User(name), std::nullopt}, std::nullopt});
    return Change(changes);
  }
  QString SetPassword(const QString& name, const char* password) const {
    return Save(User(name), User(name), CSecret(password));
  }
  static LogInOutcome LogIn(const CClient& client, const char* user, const char* password) {
    return client->LogIn({user, CSecret(password)}).outcome;
  }

  qint64 now_ = 1'700'000'000;
};

void StoreAccountsTest::init() {
  CStoreTest::init();
  fixture_->options.first_content = ConfiguredSite;
  fixture_->options.now = [this] { return QDateTime::fromSecsSinceEpoch(now_); };
  fixture_->Make();
}

void StoreAccountsTest::AsksForThePassword() {
  QVERIFY(!ann_->AsksForPasswords());
  QCOMPARE(LogIn(ann_, "bob", "anything"), LogInOutcome::kDone);  // there is none to be wrong
  QCOMPARE(SetPassword("bob", "gate 7"), QString());
  QTRY_VERIFY(ann_->HasPassword("bob"));
  QVERIFY(ann_->AsksForPasswords() && !ann_->HasPassword("ann") && !ann_->HasPassword("stranger"));
  const auto wrong = ann_->LogIn({"bob", CSecret("gate 8")});
  QCOMPARE(wrong.outcome, LogInOutcome::kWrongPassword);
  QVERIFY(!wrong.line.contains("gate 8") && !wrong.line.contains("bob"));
  QCOMPARE(LogIn(ann_, "bob", ""), LogInOutcome::kWrongPassword);
  QCOMPARE(LogIn(ann_, "stranger", "gate 7"), LogInOutcome::kUnknownUser);
  QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 7")}).outcome, LogInOutcome::kDone);
  QCOMPARE(LogIn(ann_, "bob", "gate 7"), LogInOutcome::kDone);
  QCOMPARE(fixture_->ReadPastTheStore("SELECT count(*) FROM account WHERE hash LIKE '%gate%'"), QString("0"));
  QCOMPARE(SetPassword("bob", ""), QString());
  QCOMPARE(LogIn(ann_, "bob", ""), LogInOutcome::kDone);
}

void StoreAccountsTest::LocksTheNameOverARestart() {
  QCOMPARE(SetPassword("bob", "gate 7"), QString());
  for (int wrong = 1; wrong < 5; ++wrong) {
    QCOMPARE(LogIn(ann_, "bob", "gate 8"), LogInOutcome::kWrongPassword);
  }
  QCOMPARE(LogIn(ann_, "bob", "gate 7"), LogInOutcome::kDone);  // forgets them
  for (int wrong = 1; wrong < 5; ++wrong) {
    QCOMPARE(LogIn(ann_, "bob", "gate 8"), LogInOutcome::kWrongPassword);
  }
  const auto fifth = ann_->LogIn({"bob", CSecret("gate 8")});
  QCOMPARE(fifth.outcome, LogInOutcome::kLocked);
  QCOMPARE(fifth.wait_seconds, 60);
  ann_.Leave();
  now_ += 20;
  const auto locked = ann_->LogIn({"bob", CSecret("gate 7")});
  QCOMPARE(locked.outcome, LogInOutcome::kLocked);
  QCOMPARE(locked.wait_seconds, 40);
  QVERIFY(locked.line.contains("40"));
  QCOMPARE(LogIn(ann_, "ann", ""), LogInOutcome::kDone);  // that name alone
  now_ += 40;
  QCOMPARE(LogIn(ann_, "bob", "gate 7"), LogInOutcome::kDone);
}

void StoreAccountsTest::KeepsWhoIsThereWhileItDoesNotAnswer() {
  QCOMPARE(SetPassword("bob", "gate 7"), QString());
  QCOMPARE(LogIn(ann_, "bob", "gate 7"), LogInOutcome::kDone);
  QVERIFY(ann_->Close());
  QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 7")}).outcome, LogInOutcome::kDone);
  QCOMPARE(ann_->CheckPassword({"ann"}).outcome, LogInOutcome::kDone);  // there is nothing to ask the store for
  for (int wrong = 1; wrong < 5; ++wrong) {
    QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 8")}).outcome, LogInOutcome::kWrongPassword);
  }
  QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 8")}).wait_seconds, 60);
  QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 7")}).outcome, LogInOutcome::kLocked);
  now_ += 60;
  QCOMPARE(ann_->CheckPassword({"bob", CSecret("gate 7")}).outcome, LogInOutcome::kDone);
}

// Whatever of it this desk has heard of by now; on the GUI thread nothing may wait for that.
void StoreAccountsTest::AsksForAPasswordThatIsNew() {
  QVERIFY(!ann_->HasPassword("bob"));
  QCOMPARE(SetPassword("bob", "gate 7"), QString());
  auto answer = std::async(std::launch::async, [this] { return LogIn(ann_, "bob", ""); });
  QCOMPARE(answer.get(), LogInOutcome::kWrongPassword);
}

void StoreAccountsTest::MakesNoLogInThatIsNotWanted() {
  CRecorder recorder(ann_, {"root"});
  bool came = false;
  const auto refused = ann_->LogIn({"bob"}, {[] { return false; }, [&came] { came = true; }});
  QCOMPARE(refused.outcome, LogInOutcome::kRefused);
  view::GetCurrentUserResponse current;
  QVERIFY(ann_->GetCurrentUser({}, current) && current.user.name == "ann");
  QCOMPARE(LogIn(ann_, "ann", ""), LogInOutcome::kDone);
  QTRY_COMPARE(recorder.lines.size(), 1);
  QVERIFY(!came);
}

void StoreAccountsTest::ChangesUsers() {
  SiteUserChanges changes;
  changes.user_groups.push_back({{std::nullopt, {{0, "Night shift"}}}});
  changes.users.push_back(
      {{std::nullopt, SiteUser{0, " gina ", {5, kConfigure}, {"Night shift", "Guards"}, false}}, CSecret("secret")});
  changes.limits.push_back({Users().groups.front(), {0, {}, {"Night shift"}}});
  QCOMPARE(Change(changes), QString());
  const SiteUser gina = User("gina");
  QCOMPARE(gina.user_groups, QStringList({"Guards", "Night shift"}));
  QCOMPARE(gina.rights, std::set<int>({5, kConfigure}));
  QVERIFY(gina.has_password);
  QCOMPARE(Users().groups.front().path, QString("Gates"));
  QCOMPARE(Users().groups.front().user_groups, QStringList("Night shift"));
  QTRY_COMPARE(LogIn(ann_, "gina", "secret"), LogInOutcome::kDone);
  SiteUser renamed = gina;
  renamed.name = "Gina B";
  renamed.rights = {};
  QCOMPARE(Save(gina, renamed), QString());
  QTRY_COMPARE(LogIn(ann_, "Gina B", "secret"), LogInOutcome::kDone);
  QVERIFY(!ann_->CheckControlPermission(5));
  QStringList findings;
  QString summary, error;
  QVERIFY(StoreCare::Check(fixture_->Url(), &findings, &summary, &error));
  QCOMPARE(findings, QStringList());
}

void StoreAccountsTest::RefusesAChange_data() {
  QTest::addColumn<QString>("user");  // that is changed; empty: made
  QTest::addColumn<QString>("name");
  QTest::addColumn<std::set<int>>("rights");
  QTest::addColumn<QStringList>("user_groups");
  QTest::addColumn<QString>("text");
  const std::set<int> none, all{5, 6, 7, kConfigure};
  QTest::newRow("taken name") << QString() << "bob" << none << QStringList() << "already a user \"bob\"";
  QTest::newRow("taken when renamed") << "cid"
                                      << "bob" << none << QStringList() << "already a user \"bob\"";
  QTest::newRow("line break") << QString() << "a\nb" << none << QStringList() << "control characters";
  QTest::newRow("no name") << QString() << " " << none << QStringList() << "empty";
  QTest::newRow("comma") << QString() << "a,b" << none << QStringList() << "comma";
  QTest::newRow("unknown right") << "bob"
                                 << "bob" << std::set<int>{99} << QStringList() << "no right 99";
  QTest::newRow("unknown user group") << "bob"
                                      << "bob" << none << QStringList("Owls") << "no user group \"Owls\"";
  QTest::newRow("last who configures") << "ann"
                                       << "ann" << none << QStringList() << "last user";
}

void StoreAccountsTest::RefusesAChange() {
  QFETCH(QString, user);
  QFETCH(QString, name);
  QFETCH(std::set<int>, rights);
  QFETCH(QStringList, user_groups);
  QFETCH(QString, text);
  SiteUserChanges changes;
  changes.users.push_back({{std::nullopt, SiteUser{0, "never made", {}, {}, false}}, CSecret("secret")});
  SiteUserChanges::User change{{std::nullopt, SiteUser{0, name, rights, user_groups, false}}, std::nullopt};
  if (!user.isEmpty()) {
    change.before = User(user);
    change.after->id = change.before->id;
  }
  changes.users.push_back(change);
  const QString refusal = Change(changes);
  QVERIFY2(refusal.contains(text), qPrintable(refusal));
  QCOMPARE(User("never made").id, 0);  // all or nothing
}

// Of two administrators who change the same the second learns of it, and of the last one who may there is always one.
void StoreAccountsTest::RefusesTheSecondOfTwo() {
  const SiteUser bob = User("bob");
  SiteUser one = bob, other = bob;
  one.rights = {7};
  other.name = "bobby";
  QCOMPARE(Save(bob, one), QString());
  QVERIFY(Save(bob, other).contains("changed by somebody else"));
  QCOMPARE(User("bob").rights, std::set<int>{7});
  QVERIFY(Remove("ann").contains("last user"));
  const TarnHost::SiteLimit open = Users().groups.front(), limited{open.group, open.path, {"Guards"}};
  SiteUserChanges limit, removal;
  limit.limits.push_back({open, limited});
  QCOMPARE(Change(limit), QString());
  QVERIFY(Change(limit).contains("changed by somebody else"));
  removal.user_groups.push_back({{Users().user_groups.front(), std::nullopt}});
  QVERIFY(Change(removal).contains("still limits"));
  const SiteUser cid = User("cid");
  QCOMPARE(Remove("cid"), QString());
  QVERIFY(Save(cid, cid).contains("changed by somebody else"));
}

void StoreAccountsTest::ForgetsAUserWithAllThatIsHis() {
  QCOMPARE(bob_.AddPlan("-2", "Bob's plan"), QString());
  QCOMPARE(SetPassword("bob", "gate 7"), QString());
  const int number = User("fred").id;
  QCOMPARE(Remove("bob") + Remove("fred"), QString());
  QTRY_COMPARE(LogIn(ann_, "bob", "gate 7"), LogInOutcome::kUnknownUser);
  // Who is still there can read, learns why nothing can be changed, and is not taken for somebody else.
  view::GetCurrentUserResponse current;
  QTRY_VERIFY(!bob_->GetCurrentUser({}, current));
  QCOMPARE(current.error_kind, int(view::Gone));
  QVERIFY(!bob_.AddPlan("-1", "Too late").isEmpty() && !bob_->CheckControlPermission(5));
  SiteUserChanges changes;
  changes.users.push_back({{std::nullopt, SiteUser{0, "bob", {}, {}, false}}, std::nullopt});
  QCOMPARE(Change(changes), QString());
  QVERIFY(User("bob").id > number);
  const CClient next(fixture_.get(), "bob");
  QCOMPARE(next.Groups("-2") + next.Plans("-2"), QStringList());
  QStringList findings;
  QString summary, error;
  QVERIFY(StoreCare::Check(fixture_->Url(), &findings, &summary, &error));
  QCOMPARE(findings, QStringList());
}

void StoreAccountsTest::FollowsChangesOfUsers() {
  int news = 0;
  fixture_->options.on_users = [&news] { ++news; };
  ann_.Leave();
  CRecorder recorder(ann_, {"root"});
  QTRY_VERIFY(news > 0);
  news = 0;
  SiteUserChanges changes;
  const SiteUser bob = User("bob");
  SiteUser stronger = bob;
  stronger.rights = {5, 6, 7, kConfigure};
  changes.users.push_back({{bob, stronger}, std::nullopt});
  std::string error;
  QVERIFY(!bob_->ChangeSiteUsers(changes, &error) && error.find("no right") != std::string::npos);
  CRecorder of_bob(bob_, {"root"});
  QVERIFY2(ann_->ChangeSiteUsers(changes, &error), error.c_str());
  QTRY_VERIFY(bob_->CheckControlPermission(kConfigure));
  QTRY_COMPARE(of_bob.lines, QStringList{kWholeTree});  // what is on in his trees is another now
  QTRY_VERIFY(news > 0);
  QCOMPARE(recorder.lines, QStringList());
  SiteUsers users;
  QVERIFY(bob_->GetSiteUsers(users, &error) && users.users.size() == 6);
  changes.users.front() = {{User("ann"), std::nullopt}, std::nullopt};
  QVERIFY(!ann_->ChangeSiteUsers(changes, &error) && error.find("logged in as") != std::string::npos);
}

QTEST_GUILESS_MAIN(StoreAccountsTest)
#include "store_accounts_test.moc"
