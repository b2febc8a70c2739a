#include <QtTest>

#include "store_fixture.h"

using namespace StoreTest;

/// Who may do what, and what no one may: names, nesting, groups that are not empty.
class PlanRightsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void KeepsNamesAsTheyAre();
  void RefusesNames();
  void EnforcesRights_data();
  void EnforcesRights();
  void KeepsOwnPlansFromOthers();
  void SharesCopies();
  void LimitsNesting();
  void DeletesSubtreesOrRefuses();
};

void PlanRightsTest::KeepsNamesAsTheyAre() {
  const QStringList names = {QString::fromUtf8("Tor \U0001F6A8\U0001F468\u200D\U0001F692"),
                             QString::fromUtf8("\u05E9\u05E2\u05E8 \u0627\u0644\u0628\u0648\u0627\u0628\u0629"),
                             "O'Brien'; DROP TABLE plan; --",
                             "100% _ sure",
                             "  padded  ",
                             "$1 @p {0}",
                             QString(256, 'x'),
                             QString::fromUtf8("\U0001F6A8").repeated(128)};  // two units each
  for (const QString& name : names) {
    std::string group;
    QCOMPARE(ann_.AddGroup("-1", name, &group), QString());
    QCOMPARE(ann_.AddPlan(group, name), QString());
    QVERIFY2(ann_.Groups("-1").contains(name + "@-1"), qPrintable(name));
  }
  ann_.Leave();
  for (const QString& name : names) {
    const std::string group = ann_.Group("-1", name.toStdString());
    QCOMPARE(ann_.Plans(group), QStringList{name + "@" + QString::fromStdString(group)});
    QCOMPARE(ann_.Detail(ann_->FindPlanByName(name)).name, name.toStdString());
  }
}

void PlanRightsTest::RefusesNames() {
  const std::string gates = ann_.Group("-1", "Gates");
  auto update = ann_.Unchanged(ann_.Plan("Gate A"));
  std::vector<std::string> names = {"",
                                    " \t ",
                                    std::string(257, 'x'),
                                    QString::fromUtf8("\U0001F6A8").repeated(128).append('x').toStdString(),
                                    std::string("a\0b", 3),
                                    "a\xff\xc3"};  // too long by half a character, a zero in the middle, broken UTF-8
  for (const char c : std::string("\\/:*?\"<>|\n\t\x01\x7f")) {
    names.push_back(std::string("a") + c + "b");
  }
  for (const std::string& name : names) {
    update.plan_name = name;
    const QStringList answers = {ann_.AddGroup("-1", name), ann_.AddPlan(gates, name), ann_.RenameGroup(gates, name),
                                 ann_.Update(update)};
    for (const QString& answer : answers) {
      QVERIFY2(answer.startsWith("The name ") && answer == answers.first(),
               (name + ": ").append(answer.toStdString()).c_str());
    }
  }
  QCOMPARE(ann_.Groups("-1"), QStringList{"Gates@-1"});
  QVERIFY(ann_.Plan("Gate A") == update.plan_index_code);
}

void PlanRightsTest::EnforcesRights_data() {
  QTest::addColumn<QString>("rights");
  QTest::newRow("ann") << "add, edit, remove";
  QTest::newRow("bob") << "add, edit";
  QTest::newRow("cid") << "";
  QTest::newRow("dora") << "remove";
  QTest::newRow("eve") << "add";
  QTest::newRow("fred") << "edit";
}

void PlanRightsTest::EnforcesRights() {
  QFETCH(QString, rights);
  const bool add = rights.contains("add"), edit = rights.contains("edit"), remove = rights.contains("remove");
  const QString user = QTest::currentDataTag();
  const CClient client(fixture_->Open(user));
  QCOMPARE(client->CheckControlPermission(5), add);
  QCOMPARE(client->CheckControlPermission(6), edit);
  QCOMPARE(client->CheckControlPermission(7), remove);
  for (const char* root : {"-1", "-4"}) {
    QCOMPARE(client.AddGroup(root, "New").isEmpty(), add);
    QCOMPARE(client.AddPlan(root, "New").isEmpty(), add);
  }
  const std::string gates = client.Group("-1", "Gates"), gate_a = client.Plan("Gate A");
  QCOMPARE(client.RenameGroup(gates, "Doors").isEmpty(), edit);
  QCOMPARE(client.Update(client.Unchanged(gate_a)).isEmpty(), edit);
  QCOMPARE(client.DeletePlan(gate_a).isEmpty(), remove);
  QCOMPARE(client.DeleteGroup(gates).isEmpty(), remove);
  // Everybody is the master of his own plans, whatever family the request claims.
  std::string own, plan;
  QCOMPARE(client.AddGroup("-2", "New", &own), QString());
  QCOMPARE(client.AddPlan(own, "My plan", &plan), QString());
  QCOMPARE(client.RenameGroup(own, "Newer"), QString());
  QCOMPARE(client.Update(client.Unchanged(plan)), QString());
  // A copy for somebody else is added in a tree that is not the user's own.
  for (const std::string& shared : {plan, client.Plan("Top")}) {
    const QString answer = client.Share(shared, user == "bob" ? "1" : "2");
    QCOMPARE(answer, QString(add ? "" : "You have no right to share plans."));
  }
  QCOMPARE(client.DeleteGroup(own), QString());
}

void PlanRightsTest::KeepsOwnPlansFromOthers() {
  const std::string group = bob_.Group("-2", "Bob's"), plan = bob_.Plan("Bob's gate");
  QCOMPARE(ann_.Plan("Bob's gate"), std::string());
  for (const QString& answer : AnswersToAStranger(ann_, bob_, group, plan, ann_.Plan("Ann's gate"))) {
    QVERIFY2(answer.contains("does not exist"), qPrintable(answer));  // not even that it is there is said
  }
  QCOMPARE(bob_.Plans(group).size(), 1);
  QCOMPARE(ann_.Search("gate", 1), QStringList{"Ann's gate@Ann's"});
}

void PlanRightsTest::SharesCopies() {
  const std::string plan = ann_.Plan("Ann's gate");
  for (const char* bad : {"", ",", "2,99", "x", "1", "2,1"}) {
    view::ShareViewResponseInfo response;
    QVERIFY2(!ann_->ViewShareUsers({bad, plan}, response), bad);
    QVERIFY(!response.error_info.empty() && response.error_code != 0);
  }
  QCOMPARE(bob_.Group("-2", "Shared"), std::string());  // nothing is left of a share that failed half way
  auto timed = ann_.Unchanged(plan);
  timed.auto_play = true;
  timed.begin_time = "08:00:00";
  timed.end_time = "09:00:00";
  QCOMPARE(ann_.Update(timed), QString());
  QCOMPARE(ann_.Share(plan, "2,3,2"), QString());
  QCOMPARE(ann_.Share(plan, "2"), QString());
  QTRY_COMPARE(bob_.Plans(bob_.Group("-2", "Shared")).size(), 2);
  QCOMPARE(bob_.Groups("-2").filter("Shared").size(), 1);
  const auto copy = bob_.Detail(bob_.Plan("Ann's gate"));
  QCOMPARE(copy.creator, std::string("ann"));
  QCOMPARE(copy.pages.size(), size_t(2));
  QVERIFY(!copy.auto_run && copy.start_time == "08:00:00");  // it starts when its new owner switches it on
  QCOMPARE(ann_.DeletePlan(plan), QString());
  QCOMPARE(bob_.DeletePlan(copy.index_code), QString());  // the copy is the recipient's
  QVERIFY(ann_.Share(plan, "2").contains("plan does not exist"));
}

void PlanRightsTest::LimitsNesting() {
  std::string parent = "-2";
  for (int level = 2; level <= 6; ++level) {
    QCOMPARE(ann_.AddGroup(parent, "Deeper", &parent), QString());
  }
  QVERIFY(ann_.AddGroup(parent, "Too deep").contains("6 levels"));
  QCOMPARE(ann_.AddPlan(parent, "Deep enough"), QString());
  QCOMPARE(ann_.Groups(parent), QStringList());
}

void PlanRightsTest::DeletesSubtreesOrRefuses() {
  const std::string gates = ann_.Group("-1", "Gates"), plan = ann_.Plan("Gate B");
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QCOMPARE(ann_.Groups("-1") + ann_.Search("gate", 0), QStringList());
  QVERIFY(!ann_.Detail(plan).error_info.empty());
  for (const QString& late : {ann_.DeleteGroup(gates), ann_.RenameGroup(gates, "x"), ann_.AddPlan(gates, "x")}) {
    QVERIFY2(late.contains("deleted in the meantime"), qPrintable(late));
  }
  std::string code;  // of what is gone none is given again
  QCOMPARE(ann_.AddGroup("-1", "New", &code), QString());
  QVERIFY(std::stoi(code) > std::stoi(plan));

  ann_.Leave();
  fixture_->options.switch_overrides = {{"delete_with_children", 0}};
  QVERIFY(ann_.DeleteGroup(ann_.Group("-2", "Ann's")).contains("not empty"));
  QCOMPARE(ann_.DeleteGroup(code), QString());
}

QTEST_GUILESS_MAIN(PlanRightsTest)
#include "plan_rights_test.moc"
