#include <QtTest>

#include "TarnHost/store_care.h"
#include "notice_recorder.h"
#include "roles_site.h"

using namespace StoreTest;

namespace {

/// Of a table: which rows concern one user alone, whose number stands for %1, and which else are hidden from cid, who
/// is in no user group.
struct Table {
  const char* own;
  const char* hidden;
};

const char kNone[] = "false";
const char kOwnRow[] = "family = 1 AND owner_id = %1";
const char kUsersRow[] = "user_id = %1";

// A table that is missing here has rules that no one has thought about.
const QMap<QString, Table>& Tables() {
  static const QMap<QString, Table> all = {
      {"account", {kNone, "true"}},
      {"app_user", {kNone, kNone}},
      {"camera", {kNone, kNone}},
      {"camera_access", {kNone, kNone}},
      {"camera_claim", {kNone, kNone}},
      {"camera_name", {kNone, "name IN ('of bob', 'of North')"}},
      {"camera_preset", {kNone, kNone}},
      {"camera_stream", {kNone, kNone}},
      {"change_log", {kNone, kNone}},
      {"counter", {kNone, kNone}},
      {"default_view", {kUsersRow, kNone}},
      {"deletion", {kOwnRow, "name = 'In North'"}},
      {"favorite_camera", {kUsersRow, kNone}},
      {"feature_switch", {kNone, kNone}},
      {"group_audience", {kNone, kNone}},
      {"kept_default_view", {kUsersRow, kNone}},
      {"kept_plan", {kOwnRow, "name = 'In North'"}},
      {"kept_plan_group", {kOwnRow, "name = 'In North'"}},
      {"plan", {kOwnRow, "name = 'Gate B'"}},
      {"plan_content",
       {"code IN (SELECT code FROM plan WHERE family = 1 AND owner_id = %1 UNION"
        " SELECT code FROM kept_plan WHERE family = 1 AND owner_id = %1)",
        "code IN (SELECT code FROM plan WHERE name = 'Gate B')"}},
      {"plan_group", {kOwnRow, "name = 'North'"}},
      {"plan_log", {kUsersRow, kNone}},
      {"region", {kNone, kNone}},
      {"store_info", {kNone, kNone}},
      {"user_group", {kNone, kNone}},
      {"user_group_member", {kNone, kNone}},
      {"user_right", {kNone, kNone}},
  };
  return all;
}

}  // namespace

/// Rights that the database itself keeps: what users reach who come past the program, under their own roles.
class StoreRolesTest : public CRolesTest {
  Q_OBJECT
 private Q_SLOTS:
  void EachTableHidesWhatIsOthers();
  void EachTableKeepsWhatIsOthers_data();
  void EachTableKeepsWhatIsOthers();
  void EachFunctionChecksWhoAsks();
  void FunctionsFindTheServersOwnObjects();
  void ClosedGroupsAreNotThere();
  void PlaysAreLoggedAndForgottenForAll();
  void ContentOfDeletedPlansIsNotFound();
  void NamesOfCamerasAreNotReadByNumber();
  void DesksNameCamerasOfPlansThatAreGone();
  void NoOneSignsForOthers();
  void WhatIsKeptIsDeleted();
  void EverybodyReadsTheWholeLog();

 private:
  /// All that stands in a table but what is this user's own.
  QString Digest(const QString& table, int without) const {
    const QString own = QString(Tables().value(table).own).replace("%1", QString::number(without));
    return Owner(
        QString("SELECT count(*) || ' ' || coalesce(md5(string_agg(t::text, '|' ORDER BY t::text)), '') FROM %1 t"
                " WHERE NOT (%2)")
            .arg(table, own));
  }
  QString AllDigests(int without) const {
    QString all;
    for (const QString& table : Tables().keys()) {
      all += table + ' ' + Digest(table, without) + '\n';
    }
    return all;
  }
  QStringList List(const QString& statement) const { return Owner(statement).split(' ', Qt::SkipEmptyParts); }
};

// A row that the owner sees and the user does not, in every table that has such rows.
void StoreRolesTest::EachTableHidesWhatIsOthers() {
  const QStringList tables = List("SELECT string_agg(tablename, ' ') FROM pg_tables WHERE schemaname = 'public'");
  for (const QString& table : tables) {
    QVERIFY2(Tables().contains(table), qPrintable("who reads and changes rows of " + table + "?"));
    QVERIFY2(Owner(QString("SELECT relrowsecurity FROM pg_class WHERE oid = '%1'::regclass").arg(table)) == "true",
             qPrintable(table));
  }
  QCOMPARE(tables.size(), Tables().size());
  for (const QString& table : tables) {
    for (const char* condition : {Tables()[table].own, Tables()[table].hidden}) {
      const QString rows =
          Owner(QString("SELECT array_agg(ctid) FROM %1 WHERE %2").arg(table, QString(condition).replace("%1", "2")));
      QVERIFY2(rows.isEmpty() == (qstrcmp(condition, kNone) == 0), qPrintable(table + condition));
      const QString answer = cid_->Try(QString("SELECT count(*) FROM %1 WHERE ctid = ANY ('%2')").arg(table, rows));
      QVERIFY2(answer == "0" || rows.isEmpty() || answer.startsWith("!ERROR:  permission denied"),
               qPrintable(table + answer));
    }
  }
}

void StoreRolesTest::EachTableKeepsWhatIsOthers_data() {
  QTest::addColumn<int>("user");
  QTest::addColumn<bool>("has_rights");
  QTest::newRow("cid") << 3 << false;
  QTest::newRow("ann") << 1 << true;  // none that counts among bob's own
}

void StoreRolesTest::EachTableKeepsWhatIsOthers() {
  QFETCH(int, user);
  QFETCH(bool, has_rights);
  const CDirectAccess attacker(fixture_->UrlOf(QTest::currentDataTag()));
  for (const QString& table : Tables().keys()) {
    const auto state = [&] {
      return has_rights ? Owner(QString("SELECT md5(string_agg(t::text, '|' ORDER BY t::text)) FROM %1 t WHERE %2")
                                    .arg(table, QString(Tables()[table].own).replace("%1", "2")))
                        : Digest(table, user);
    };
    const QString before = state();
    QStringList attempts{"DELETE FROM " + table, "TRUNCATE " + table,
                         QString("INSERT INTO %1 SELECT * FROM %1").arg(table)};
    const QStringList columns = List(QString("SELECT string_agg(column_name, ' ') FROM information_schema.columns"
                                             " WHERE table_schema = 'public' AND table_name = '%1'")
                                         .arg(table));
    for (const QString& column : columns) {
      for (const char* value : {"7", "'7'", "2", "-2", "1", "NULL"}) {
        attempts << QString("UPDATE %1 SET %2 = %3").arg(table, column, value)
                 << QString("UPDATE %1 SET %2 = %3 WHERE %2 IS NOT NULL").arg(table, column, value);
      }
    }
    // A copy of another's row, under other numbers.
    const QString victim = Owner(QString("SELECT to_json(t) FROM %1 t WHERE %2 LIMIT 1")
                                     .arg(table, QString(Tables()[table].own).replace("%1", "2")));
    for (const char* change : {"{}", "{\"code\": 100001}", "{\"code\": 100099, \"user_id\": 2}", "{\"user_id\": 3}"}) {
      attempts << QString("INSERT INTO %1 SELECT (json_populate_record(NULL::%1, ('%2'::jsonb || '%3')::json)).*")
                      .arg(table, victim.isEmpty() ? "{}" : QString(victim).replace('\'', "''"), change);
    }
    for (const QString& attempt : attempts) {
      attacker.Try("BEGIN");
      attacker.Try(attempt);
      attacker.Try("COMMIT");
      QVERIFY2(state() == before, qPrintable(attempt));
    }
  }
}

// Every function, aimed at what is bob's or hidden; who adds one says here how it is tried.
void StoreRolesTest::EachFunctionChecksWhoAsks() {
  const QString plan = Code("plan", "Bob's gate"), group = Code("plan_group", "Bob's"), hidden = Code("plan", "Gate B");
  const QString north = Code("plan_group", "North"), top = Code("plan", "Top");
  const QString kept = Owner("SELECT code FROM deletion WHERE owner_id = 2");
  const QMap<QString, QStringList> attempts = {
      {"tarn_acts_as", {"(2)"}},
      {"tarn_advance", {"('code', -5)", "('code', 2000000000)", "('seq', 1)", "('camera', 1)", "('region', 1)"}},
      {"tarn_camera_numbers", {}},  // everybody may name a camera
      {"tarn_cameras_of", {}},
      {"tarn_check_deletion", {"()"}},
      {"tarn_check_move", {"()"}},
      {"tarn_check_plan", {"()"}},
      {"tarn_delete",
       {"(" + plan + ", false)", "(" + group + ", true)", "(" + top + ", false)", "(" + north + ", true)"}},
      {"tarn_deleted_at", {"(0, " + plan + ")"}},
      {"tarn_deletions", {}},  // codes and times
      {"tarn_forget", {"(" + kept + ", 100)"}},
      {"tarn_forget_favorites", {"()"}},
      {"tarn_forget_plays", {"(1, 100)"}},  // what is not old
      {"tarn_groups_below", {"(" + group + ")"}},
      {"tarn_hidden_groups", {}},
      {"tarn_hidden_plans_showing", {}},
      {"tarn_is_new_code", {}},
      {"tarn_is_open_below", {}},
      {"tarn_is_owner", {}},
      {"tarn_is_place", {}},
      {"tarn_keep",
       {"(" + plan + ", false, 2, 5)", "(" + plan + ", false, 3, 5)", "(" + group + ", true, 3, 5)",
        "(" + hidden + ", false, 3, 5)", "(" + kept + ", true, 3, 5)", "(" + top + ", false, 3, 5)"}},
      {"tarn_log_change", {"('x', 5, 1)", "('x', 6, 1)", "('x', 99, 1)"}},
      {"tarn_may", {}},
      {"tarn_may_delete", {"(" + plan + ", false)"}},
      {"tarn_may_share_with", {"(2)"}},
      {"tarn_put_back", {"(" + kept + ")"}},
      {"tarn_require", {"(true)"}},
      {"tarn_share_group", {"(" + plan + ", 2)", "(100000, 2)"}},
      {"tarn_share_plan", {"(100000, 2, 'x', 1, 1, '', '', '', 'cid', '', '', '', NULL)"}},
      {"tarn_shared_group", {"(2)"}},
      {"tarn_shown_cameras", {}},
      {"tarn_user", {}},
      {"tarn_user_name", {}},
  };
  const QStringList functions = List(
      "SELECT string_agg(DISTINCT proname, ' ') FROM pg_proc"
      " WHERE pronamespace = 'public'::regnamespace");
  for (const QString& name : functions) {
    QVERIFY2(attempts.contains(name), qPrintable("who may call " + name + "?"));
    for (const QString& call : attempts[name]) {
      const QString before = AllDigests(3);
      const QString answer = cid_->Try("SELECT " + name + call);
      const bool is_refused = answer.startsWith("!ERROR:  permission denied") ||
                              answer.startsWith("!ERROR:  the plan store does not allow that");
      QVERIFY2(is_refused || name == "tarn_forget", qPrintable(name + call + ": " + answer));
      QCOMPARE(AllDigests(3), before);
    }
  }
  QCOMPARE(functions.size(), attempts.size());
  QCOMPARE(Owner("SELECT count(*) FROM pg_proc WHERE pronamespace = 'public'::regnamespace AND (proconfig IS NULL OR"
                 " NOT proconfig[1] ~ '^search_path=pg_catalog, .*, pg_temp$')"),
           QString("0"));
  // What a role asks of itself.
  QCOMPARE(cid_->Run("SELECT tarn_user() || ' ' || tarn_is_owner() || ' ' || tarn_may(8)"), QString("3 false false"));
  for (const QString& hidden_plan : {plan, hidden, QString("1")}) {
    QCOMPARE(cid_->Run("SELECT count(*) FROM tarn_cameras_of(" + hidden_plan + ")"), QString("0"));
  }
  QCOMPARE(cid_->Run("SELECT count(*) FROM tarn_cameras_of(" + top + ")"), QString("2"));
  QCOMPARE(cid_->Run("SELECT tarn_is_place(" + group + ", 1, 2)"), QString("false"));
  QCOMPARE(cid_->Run("SELECT tarn_is_place(" + north + ", 0, 0)"), QString("false"));
  QCOMPARE(cid_->Run("SELECT tarn_is_new_code(" + kept + ")"), QString("false"));
  QCOMPARE(cid_->Run("SELECT tarn_hidden_plans_showing('1001')"), QString("0"));  // who configures the site may know
}

// A user who makes objects of the same names, in a schema of his own or for his session, changes nothing for functions
// and policies.
void StoreRolesTest::FunctionsFindTheServersOwnObjects() {
  Owner("GRANT CREATE ON DATABASE " + QUrl(fixture_->Url()).path().mid(1) + " TO cid");
  const char* const traps[] = {
      "CREATE SCHEMA evil",
      "CREATE FUNCTION evil.tarn_user() RETURNS integer LANGUAGE sql AS 'SELECT 2'",
      "CREATE FUNCTION evil.tarn_may(integer) RETURNS boolean LANGUAGE sql AS 'SELECT true'",
      "CREATE FUNCTION evil.tarn_require(boolean) RETURNS void LANGUAGE sql AS ''",
      "CREATE FUNCTION evil.always(text, text) RETURNS boolean LANGUAGE sql AS 'SELECT true'",
      "CREATE OPERATOR evil.= (LEFTARG = text, RIGHTARG = text, FUNCTION = evil.always)",
      "CREATE FUNCTION evil.pg_has_role(name, name, text) RETURNS boolean LANGUAGE sql AS 'SELECT true'",
      "CREATE TEMP TABLE app_user (id integer, name text, role_name text)",
      "INSERT INTO pg_temp.app_user VALUES (2, 'cid', 'cid')",
      "CREATE TEMP TABLE user_right (user_id integer, code integer)",
      "INSERT INTO pg_temp.user_right VALUES (2, 8), (3, 8), (3, 7)",
      "CREATE TEMP TABLE group_audience (group_code integer, user_group_id integer)",
      "SET search_path = evil, pg_temp, pg_catalog, public",
  };
  for (const char* trap : traps) {
    QCOMPARE(cid_->Try(trap), QString());
  }
  QCOMPARE(cid_->Run("SELECT tarn_user()"), QString("2"));  // the trap works for who asks for it
  QCOMPARE(cid_->Run("SELECT public.tarn_user()"), QString("3"));
  QCOMPARE(cid_->Run("SELECT public.tarn_may(8) OR public.tarn_is_owner()"), QString("false"));
  QCOMPARE(cid_->Run("SELECT count(*) FROM public.plan WHERE family = 1 OR name LIKE 'Gate B'"), QString("0"));
  const QString top = Code("plan", "Top");
  QVERIFY(cid_->Try("SELECT public.tarn_delete(" + top + ", false)").startsWith("!ERROR:  the plan store does not"));
  QVERIFY(cid_->Try("SELECT public.tarn_advance('camera', 1)").startsWith("!ERROR:  the plan store does not"));
  QVERIFY(cid_->Try("SET ROLE tarn").startsWith("!"));
  QVERIFY(cid_->Try("SET SESSION AUTHORIZATION tarn").startsWith("!"));
  QVERIFY(cid_->Try("CREATE FUNCTION public.tarn_user(x integer) RETURNS integer LANGUAGE sql AS ''").startsWith("!"));
}

// In trees, search, timed runs, counts and SQL, also for what comes under the group later.
void StoreRolesTest::ClosedGroupsAreNotThere() {
  const std::string gates = ann_.Group("-1", "Gates"), north = ann_.Group(gates, "North");
  auto options = fixture_->options;
  options.url = fixture_->UrlOf("cid");
  QString error;
  const CClient cid(TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(TarnTest::LogIn(*cid, "cid", &error), qPrintable(error));
  QCOMPARE(cid.Groups(gates), QStringList());
  QCOMPARE(cid.Search("gate b", 0), QStringList());
  QCOMPARE(cid.Search("of North", 0), QStringList());
  view::GetPlanDetailResponse detail;
  QVERIFY(!cid->GetPlanDetail({"", 1, false}, detail));
  QCOMPARE(QString::fromStdString(detail.error_info), QString("NoAutoRunPlan"));
  options.url = fixture_->UrlOf("bob");
  const CClient bob(TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(TarnTest::LogIn(*bob, "bob", &error), qPrintable(error));
  QVERIFY(bob->GetPlanDetail({"", 1, false}, detail));
  QCOMPARE(detail.name, std::string("Gate B"));

  std::string later;
  QCOMPARE(ann_.AddGroup(north, "Later", &later), QString());
  QCOMPARE(cid_->Run("SELECT count(*) FROM plan_group WHERE name IN ('North', 'Later')"), QString("0"));
  QString said;
  QVERIFY(
      TarnHost::StoreCare::LimitGroup(fixture_->Url(), QString::fromStdString(north), QStringList(), &said, &error));
  QTRY_COMPARE(cid.Groups(gates).size(), 1);
  QCOMPARE(cid.Search("gate b", 0).size(), 1);
  QCOMPARE(cid.Search("of North", 0).size(), 1);
  QVERIFY(TarnHost::StoreCare::LimitGroup(fixture_->Url(), QString::fromStdString(north), QStringList("Guards"), &said,
                                          &error));
  QTRY_COMPARE(cid.Groups(gates).size(), 0);
  QCOMPARE(cid_->Run("SELECT count(*) FROM plan_group WHERE name IN ('North', 'Later')"), QString("0"));
}

// It waits under its code for the deletion to be undone: who had a row of his own under this code would read it.
void StoreRolesTest::PlaysAreLoggedAndForgottenForAll() {
  Owner("INSERT INTO plan_log VALUES ('2020-01-01 00:00:00', 1, 'Long ago', 0, 0)");
  auto options = fixture_->options;
  options.url = fixture_->UrlOf("bob");
  for (int session = 2; session <= 3; ++session) {
    QString error;
    const CClient bob(TarnHost::CPlanStore::Open(options, &error));
    QVERIFY2(TarnTest::LogIn(*bob, "bob", &error), qPrintable(error));
    view::AddPlanLogResponseParam logged;
    QVERIFY2(bob->AddPlanLog({"Top", false, false}, logged), logged.error_info.c_str());
    QCOMPARE(Owner("SELECT count(*) FROM plan_log WHERE user_id = 2"), QString::number(session));
  }
  QCOMPARE(Owner("SELECT count(*) FROM plan_log WHERE name = 'Long ago'"), QString("0"));
}

void StoreRolesTest::ContentOfDeletedPlansIsNotFound() {
  const QString code = Owner("SELECT code FROM kept_plan WHERE owner_id = 2");
  const QString plan = "INSERT INTO plan VALUES (%1, -2, 1, 3, 'x', 1, 1, 0, '', '', '', 'cid', '', 1, 'cid', '', '')";
  QVERIFY(cid_->Try(plan.arg(code)).startsWith("!ERROR:  new row violates row-level security"));
  QVERIFY(cid_->Try(plan.arg(2000000)).startsWith("!ERROR:  new row violates row-level security"));  // not given yet
  const QString fresh = cid_->Run("SELECT tarn_advance('code', 1)");
  QCOMPARE(cid_->Try(plan.arg(fresh)), QString());
  QVERIFY(cid_->Try("UPDATE plan SET code = " + code).startsWith("!ERROR:  permission denied"));
  QCOMPARE(cid_->Run("SELECT count(*) FROM plan_content WHERE code = " + code), QString("0"));
  QVERIFY(
      cid_->Try("UPDATE plan SET family = 0, parent_code = -1, owner_id = 0").startsWith("!ERROR:  the plan store"));
}

// Who writes numbers of cameras into a plan of his own, or has them written into it, would read their names.
void StoreRolesTest::NamesOfCamerasAreNotReadByNumber() {
  const QString all = Owner("SELECT string_agg(number::text, ' ') FROM camera_name");
  const QString plan =
      "INSERT INTO plan VALUES (%1, -2, 1, 3, 'x', 1, 1, 0, '', '', '%2', 'cid', '', 1, 'cid', '', '')";
  const QString code = cid_->Run("SELECT tarn_advance('code', 1)"), refusal = "!ERROR:  the plan store";
  const QString names = "SELECT string_agg(name, ',' ORDER BY name) FROM camera_name";
  const QString read_before = cid_->Run(names);
  QVERIFY(!read_before.contains("of bob") && !read_before.contains("of North"));
  QVERIFY(cid_->Try(plan.arg(code, all)).startsWith(refusal));
  QCOMPARE(cid_->Try(plan.arg(code, "")), QString());
  QVERIFY(cid_->Try("UPDATE plan SET cameras = '" + all + "' WHERE code = " + code).startsWith(refusal));
  const CDirectAccess bob(fixture_->UrlOf("bob"));
  const QString share =
      "SELECT tarn_share_plan(tarn_advance('code', 1)::int, 3, 'x', 1, 1, '', '', '%1', 'bob', '', '',"
      " '', NULL)";
  bob.Try("SELECT tarn_share_group(tarn_advance('code', 1)::int, 3)");
  QVERIFY(bob.Try(share.arg(all)).startsWith(refusal));
  QVERIFY(!bob.Try(share.arg("")).startsWith('!'));
  QCOMPARE(cid_->Run(names), read_before);
  // What was asked for is good for one transaction, and brings nothing else along.
  const QString update = "UPDATE plan SET cameras = '%1' WHERE code = " + code;
  cid_->Run("BEGIN");
  const QString number = cid_->Run("SELECT tarn_camera_numbers('[[\"77\", \"Guessed\"]]')");
  QCOMPARE(cid_->Try(update.arg(number)), QString());
  cid_->Run("COMMIT");
  QVERIFY(cid_->Run(names).contains("Guessed"));
  QCOMPARE(cid_->Try(update.arg("")), QString());
  QVERIFY(cid_->Try(update.arg(number)).startsWith(refusal));
}

// A desk goes on with names that it has read, also when no plan has them any more.
void StoreRolesTest::DesksNameCamerasOfPlansThatAreGone() {
  auto options = fixture_->options;
  options.url = fixture_->UrlOf("bob");
  QString error;
  const CClient bob(TarnHost::CPlanStore::Open(options, &error)), other(TarnHost::CPlanStore::Open(options, &error));
  QVERIFY2(TarnTest::LogIn(*bob, "bob", &error) && TarnTest::LogIn(*other, "bob", &error), qPrintable(error));
  auto request = bob.Unchanged(bob.Plan("Bob's gate"));
  for (const char* name : {"Old name", "New name", "Old name"}) {
    request.pages.front().windows.front().resource_name = name;
    request.revision = 0;
    QCOMPARE(bob.Update(request), QString());
    QTRY_COMPARE(other.Search(name, 1).size(), 1);
  }
}

void StoreRolesTest::NoOneSignsForOthers() {
  const QString code = cid_->Run("SELECT tarn_advance('code', 1)"), refusal = "!ERROR:  the plan store";
  const QString plan =
      "INSERT INTO plan VALUES (" + code + ", -2, 1, 3, 'x', 1, 1, 0, '', '', '', '%1', '', 1, '%2', '', '')";
  for (const QString& forged : {plan.arg("ann", "cid"), plan.arg("cid", "ann"), plan.arg("", "")}) {
    QVERIFY2(cid_->Try(forged).startsWith("!ERROR:  new row violates row-level security"), qPrintable(forged));
  }
  QCOMPARE(cid_->Try(plan.arg("cid", "cid")), QString());
  QVERIFY(cid_->Try("UPDATE plan SET changed_by = 'ann' WHERE code = " + code).startsWith(refusal));
  QVERIFY(cid_->Try("UPDATE plan SET creator = 'ann'").startsWith("!ERROR:  permission denied"));
  const CDirectAccess bob(fixture_->UrlOf("bob"));
  const QString change = "UPDATE plan SET name = 'Changed' %1 WHERE code = " + Code("plan", "Top");
  Owner("UPDATE plan SET changed_by = 'ann' WHERE name = 'Top'");
  QVERIFY(bob.Try(change.arg("")).startsWith(refusal));
  QCOMPARE(bob.Try(change.arg(", changed_by = 'bob'")), QString());
}

// What is kept and stays would be in the way when others delete it.
void StoreRolesTest::WhatIsKeptIsDeleted() {
  const CDirectAccess ann(fixture_->UrlOf("ann"));
  const QString top = Code("plan", "Top");
  ann.Run("BEGIN");
  ann.Run("SELECT tarn_keep(" + top + ", false, 1, 5)");
  QVERIFY(ann.Try("COMMIT").startsWith("!ERROR:  the plan store"));
  QCOMPARE(Owner("SELECT count(*) FROM deletion WHERE code = " + top), QString("0"));
}

// A row that were hidden there would look like one that is missing.
void StoreRolesTest::EverybodyReadsTheWholeLog() {
  const QString all = "SELECT count(*) || ' ' || max(seq) FROM change_log";
  QCOMPARE(cid_->Run(all), Owner(all));
  QCOMPARE(cid_->Run("SELECT value FROM counter WHERE name = 'seq'"), Owner("SELECT max(seq) FROM change_log"));
}

QTEST_GUILESS_MAIN(StoreRolesTest)
#include "store_roles_test.moc"
