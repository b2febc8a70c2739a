#include <QUrl>
#include <QtTest>

#include "TarnHost/store_care.h"
#include "notice_recorder.h"
#include "roles_site.h"
#include "server_pause.h"

using namespace StoreTest;

/// How roles come and go with the users of a site, which are refused, and how users log in at the server.
class StoreRoleLifeTest : public CRolesTest {
  Q_OBJECT
 private Q_SLOTS:
  void RolesThatPassRightsAreRefused();
  void UserWhoIsDeletedIsRefused();
  void RolesFollowTheirUsers();
  void WithoutTheRightToMakeRolesItIsSaidWhatToDo();
  void LogsInAtTheServer();  // last: the server asks these roles for passwords from there on

 private:
  /// The records as they are, for a change of one.
  static TarnHost::SiteUsers Users(const QString& url) {
    TarnHost::SiteUsers users;
    QString error;
    if (!TarnHost::StoreCare::ReadUsers(url, &users, &error)) {
      qFatal("the users cannot be read: %s", qPrintable(error));
    }
    return users;
  }
  TarnHost::SiteUser User(const QString& name) const {
    for (const TarnHost::SiteUser& user : Users(fixture_->Url()).users) {
      if (user.name == name) {
        return user;
      }
    }
    return {};
  }
  QString Change(const std::optional<TarnHost::SiteUser>& before, const std::optional<TarnHost::SiteUser>& after,
                 const std::optional<std::string>& password = std::nullopt) const {
    TarnHost::SiteUserChanges changes;
    changes.users.emplace_back();
    changes.users.back().before = before;
    changes.users.back().after = after;
    if (password) {
      changes.users.back().password = TarnHost::CSecret(*password);
    }
    QString error;
    return TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error) ? QString() : error;
  }
  QString SetPassword(const QString& user, const std::string& password) const {
    return Change(User(user), User(user), password);
  }
};

void StoreRoleLifeTest::RolesThatPassRightsAreRefused() {
  const CDirectAccess server(CStoreFixture::SuperuserUrl());
  server.Run("DROP ROLE IF EXISTS passes");
  server.Run("DROP ROLE IF EXISTS stranger");
  server.Run("CREATE ROLE passes LOGIN BYPASSRLS");
  server.Run("CREATE ROLE stranger LOGIN");
  const QString station = Owner("SELECT value FROM store_info WHERE name = 'desk_role'");
  Owner("GRANT " + station + " TO stranger");
  const QMap<QString, QString> refusals = {{"super", "passes all rights of a database"},
                                           {"passes", "passes all rights of a database"},
                                           {"stranger", "role \"stranger\" is no user of this site"}};
  for (const QString& role : refusals.keys()) {
    fixture_->options.url = fixture_->UrlOf(role);
    const QString error = fixture_->OpeningError();
    QVERIFY2(error.contains(refusals[role]) && !error.contains('\n'), qPrintable(error));
  }
}

// The connections are the new user's, also that of reads; a password that is wrong, or a server that keeps silent,
// leaves the old one's.
void StoreRoleLifeTest::LogsInAtTheServer() {
  using TarnHost::LogInOutcome;
  const std::string ann_word = "it's \"one\" \\ \u00e9", bob_word(1000, 'x');
  QCOMPARE(SetPassword("ann", ann_word), QString());
  QCOMPARE(SetPassword("bob", bob_word), QString());
  QVERIFY(SetPassword("bob", std::string("a\0b", 3)).contains("NUL"));
  CDirectAccess(CStoreFixture::SuperuserUrl()).Run("GRANT asks_for_password TO ann, bob, cid");
  auto options = fixture_->options;
  options.account = {"ann", TarnHost::CSecret("wrong")};
  QString error;
  QVERIFY(!TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(error.contains("unknown or has another password"), qPrintable(error));
  options.account.password = TarnHost::CSecret(ann_word);
  const CClient client(TarnHost::CPlanStore::Open(options, &error));
  const auto log_in = [&client](const char* user, const std::string& password) {
    return client->LogIn({user, TarnHost::CSecret(password)}).outcome;
  };
  QVERIFY(log_in("ann", ann_word) == LogInOutcome::kDone);
  QTRY_VERIFY(client->IsViewResourceDownFinish());
  for (const auto& [user, word] : {std::pair("bob", "wrong"), std::pair("cid", ""), std::pair("ann", "wrong")}) {
    QVERIFY(log_in(user, word) == LogInOutcome::kWrongPassword);
    QVERIFY(client->CheckPassword({user, TarnHost::CSecret(word)}).outcome == LogInOutcome::kWrongPassword);
  }
  QCOMPARE(client.Groups("-2").value(0), QString("Ann's@-2"));
  const std::string hers = client.Plan("Ann's gate");

  QVERIFY(log_in("bob", bob_word) == LogInOutcome::kDone);
  QCOMPARE(client.Groups("-2").value(0), QString("Bob's@-2"));
  QVERIFY(client.Detail(hers).error_info.find("does not exist") != std::string::npos);
  std::string plan;
  QCOMPARE(client.AddPlan("-2", "Of bob", &plan), QString());
  QCOMPARE(Owner("SELECT owner_id || ' ' || creator FROM plan WHERE code = " + QString::fromStdString(plan)),
           QString("2 bob"));
  QVERIFY(client.DeletePlan(client.Plan("Top")).contains("no right to delete"));

  QCOMPARE(SetPassword("bob", "new"), QString());
  QVERIFY(client->CheckPassword({"bob", TarnHost::CSecret("new")}).IsDone());  // and with this one it connects again
  QUrl with_account(fixture_->UrlOf("bob"));
  with_account.setPassword("new");
  options.url = with_account.toString();
  options.account = {};
  const CClient by_address(TarnHost::CPlanStore::Open(options, &error));

  const CServerPause pause;
  QVERIFY(client->LogIn({"ann", TarnHost::CSecret(ann_word)}).outcome == LogInOutcome::kUnavailable);
  QVERIFY(client->CheckPassword({"ann", TarnHost::CSecret(ann_word)}).outcome == LogInOutcome::kUnavailable);
  for (const CClient* desk : {&client, &by_address}) {
    const auto check = [desk](const char* word) {
      return (*desk)->CheckPassword({"bob", TarnHost::CSecret(word)}).outcome;
    };
    for (int wrong = 1; wrong < 5; ++wrong) {
      QVERIFY(check("old") == LogInOutcome::kWrongPassword);
    }
    QVERIFY(check("new") == LogInOutcome::kDone);  // as it was the last time
  }
  view::GetCurrentUserResponse user;
  QVERIFY(client->GetCurrentUser({}, user) && user.user.name == "bob");
}

// While he is logged in: at the next call, and the trees go. So does a desk whose role stays with the server, because
// something else there needs it: an object, or another site.
void StoreRoleLifeTest::UserWhoIsDeletedIsRefused() {
  TarnHost::SiteUser eve;
  eve.name = "eve";
  QCOMPARE(Change(std::nullopt, eve), QString());
  Owner(
      "DO $$ DECLARE site text; BEGIN FOR site IN SELECT rolname FROM pg_roles WHERE rolname LIKE 'tarn\\_desk\\_%'"
      " AND rolname <> (SELECT value FROM store_info WHERE name = 'desk_role') LOOP"
      " EXECUTE format('REVOKE %I FROM bob, cid', site); EXECUTE format('GRANT %I TO eve', site);"
      " END LOOP; END $$");
  auto options = fixture_->options;
  for (const char* name : {"bob", "cid", "eve"}) {
    options.url = fixture_->UrlOf(name);
    QString error;
    const CClient client(TarnHost::CPlanStore::Open(options, &error));
    QVERIFY2(TarnTest::LogIn(*client, name, &error), qPrintable(error));
    const CDirectAccess session(fixture_->UrlOf(name));
    const CRecorder trees(client, {"root"});
    if (qstrcmp(name, "cid") == 0) {
      Owner("CREATE TABLE elsewhere ()");
      Owner("GRANT SELECT ON elsewhere TO cid");  // so the role cannot be dropped
    }
    QCOMPARE(Change(User(name), std::nullopt), QString());
    QTRY_COMPARE(trees.lines, QStringList(kWholeTree));
    QCOMPARE(client.Groups("-1"), QStringList("!Your user was deleted in the meantime."));
    QVERIFY(client.AddPlan("-2", "x").contains("was deleted"));
    QVERIFY(session.Try("SELECT count(*) FROM plan").startsWith('!'));
  }
  QCOMPARE(Owner("SELECT string_agg(rolname, ' ') FROM pg_roles WHERE rolname IN ('bob', 'cid', 'eve')"),
           QString("cid eve"));
}

void StoreRoleLifeTest::RolesFollowTheirUsers() {
  const auto role_of = [this](int user) {
    return Owner(QString("SELECT role_name || ' ' || (SELECT count(*) FROM pg_roles WHERE rolname = role_name)"
                         " FROM app_user WHERE id = %1")
                     .arg(user));
  };
  const QString odd = "o'dd; DROP TABLE plan; --";
  TarnHost::SiteUser fresh;
  fresh.name = odd;
  Owner("DROP ROLE IF EXISTS \"" + odd + '"');
  Owner("DROP ROLE IF EXISTS renamed");
  QCOMPARE(Change(std::nullopt, fresh, "word"), QString());
  QCOMPARE(role_of(4), odd + " 1");
  QVERIFY(Owner("SELECT count(*) FROM plan") != "0");
  auto renamed = User(odd);
  renamed.name = "renamed";
  QCOMPARE(Change(User(odd), renamed), QString());
  QCOMPARE(role_of(4), QString("renamed 1"));
  QCOMPARE(CDirectAccess(fixture_->UrlOf("renamed")).Run("SELECT tarn_user()"), QString("4"));
  for (const QString& taken : {QString("tarn"), QString("super"), QString("pg_monitor"), QString(64, 'x')}) {
    fresh.name = taken;
    QVERIFY2(!Change(std::nullopt, fresh).isEmpty(), qPrintable(taken));
  }
  QCOMPARE(Owner("SELECT count(*) FROM app_user"), QString("4"));
}

// The database's administrator makes the roles then, or a directory has the passwords.
void StoreRoleLifeTest::WithoutTheRightToMakeRolesItIsSaidWhatToDo() {
  const CDirectAccess server(CStoreFixture::SuperuserUrl());
  const QString name = QUrl(fixture_->Url()).path().mid(1) + "_poor";
  server.Run("DROP ROLE IF EXISTS poor");
  server.Run("CREATE ROLE poor LOGIN");
  server.Run("CREATE DATABASE " + name + " OWNER poor");
  fixture_->options.url = fixture_->UrlOf("poor") + "_poor";
  fixture_->Make();
  QString said, error;
  const auto use = [&] { return TarnHost::StoreCare::UseRoles(fixture_->Url(), &said, &error); };
  QVERIFY(!use());
  const QString statement = error.mid(error.indexOf("CREATE ROLE \"tarn_desk_"));
  QVERIFY2(statement.endsWith("\" NOLOGIN") && !error.contains('\n'), qPrintable(error));
  server.Run(statement);
  QVERIFY2(use(), qPrintable(error));
  QVERIFY2(said.endsWith("database's administrator: ann, bob, cid."), qPrintable(said));
  server.Run("GRANT " + statement.section('"', 0, 1).mid(12) + "\" TO ann");
  QVERIFY2(use() && said.endsWith("database's administrator: bob, cid."), qPrintable(said));
  QVERIFY(User("bob").lacks_role && !User("ann").lacks_role);
  const CDirectAccess ann(fixture_->UrlOf("ann"));
  QCOMPARE(ann.Run("SELECT count(*) FROM plan WHERE name LIKE '%''s gate'"), QString("1"));
}

QTEST_GUILESS_MAIN(StoreRoleLifeTest)
#include "store_role_life_test.moc"
