#include <QtTest>
#include <algorithm>
#include <functional>

#include "held_request_test.h"
#include "sub_items.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::ChangedPlan;
using TarnTest::CHeldRequestTest;
using TarnTest::CRecordingServices;
using TarnTest::Outline;

Q_DECLARE_METATYPE(std::function<void(CChangeJournal&)>)

// Groups and plans change while the host still reads what an expansion has asked for.
class OvertakenExpansionsTest : public CHeldRequestTest {
  Q_OBJECT
 private Q_SLOTS:
  void ChangedWhileItsGroupLoads_data();
  void ChangedWhileItsGroupLoads();
  void OnlyWhatConcernsAnExpansionOvertakesIt_data();
  void OnlyWhatConcernsAnExpansionOvertakesIt();
  void OvertakenTimeAndAgain();
  void WhatWasLeftOutOutlastsAFailure();
  void WhatWasLeftOutIsOfItsTree();
  void HowAFetchGoesOn_data();
  void HowAFetchGoesOn();
  void WhatOvertakesAnAnswer_data();
  void WhatOvertakesAnAnswer();

 private:
  /// Of an expansion: none of its calls holds the GUI thread up.
  int FetchesOffTheGuiThread() {
    const auto calls = Services().Calls();
    return static_cast<int>(std::count_if(calls.cbegin(), calls.cend(), [](const CRecordingServices::Call& call) {
      return call.name == "GetPlansInGroup" && !call.on_gui_thread;
    }));
  }
  /// Somebody else saves a plan, and the notice comes.
  void SavedElsewhere(const QString& plan, const char* name, const QString& group) {
    QCOMPARE(fixture_.InStore().Update(ChangedPlan(plan, name, group)), QString());
    Manager().OnViewChanged(plan);
  }
  /// The fetch that is about to begin is overtaken by a change of one of the plans; then the next one is about to.
  void Overtake(const QString& name) {
    Services().Hold("GetPlansInGroup", AfterCall);
    Services().Release("GetPlanGroups");
    QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
    SavedElsewhere(changing_, qPrintable(name), fixture_.Code("Public B"));
    Services().Hold("GetPlanGroups");
    Services().Release("GetPlansInGroup");
    QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  }
  /// Opens the group without the plan that is changed all the time, which is still to be asked for.
  void OpenPartly() {
    changing_ = fixture_.Code("Public B plan 2");
    AskAndHold("GetPlanGroups", CRecordingServices::BeforeCall,
               [this] { controller_->OnExpandViewTreeItem(GroupRow("Public B")); });
    for (int fetch = 1; fetch <= 5; ++fetch) {
      QCOMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B)").arg(kGroupA));
      Overtake(QString("name %1").arg(fetch));
    }
    QCOMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B(Public B plan 10))").arg(kGroupA));
  }

  QString changing_;
};

void OvertakenExpansionsTest::ChangedWhileItsGroupLoads_data() {
  QTest::addColumn<QString>("success");
  QTest::newRow("deleted") << "tip 0 DeleteTheSuccess";
  QTest::newRow("moved") << "tip 0 SaveSuccessfulYCFI2BGO";
}

// What the host answered before the change would bring back what was there then.
void OvertakenExpansionsTest::ChangedWhileItsGroupLoads() {
  QFETCH(QString, success);
  AskAndHold("GetPlansInGroup", AfterCall, [this] { controller_->OnExpandViewTreeItem(GroupRow("Public B")); });
  if (QTest::currentDataTag() == QLatin1String("deleted")) {  // in another panel, which has the group open
    Manager().InsertSubPlanNode(fixture_.Code("Public B"), 0);
    controller_->DeletePlanByIndex(PlanRow("Public B plan 2"));
  } else {  // to where no rows are loaded
    controller_->UpdatePlanParam(ChangedPlan(fixture_.Code("Public B plan 2"), "moved", fixture_.Code("A1")), "");
  }
  QTRY_VERIFY(log_->lines.contains(success));
  AnswerAll();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B(Public B plan 10))").arg(kGroupA));
}

void OvertakenExpansionsTest::OnlyWhatConcernsAnExpansionOvertakesIt_data() {
  QTest::addColumn<int>("fetches");
  QTest::addColumn<QString>("outline");
  const QString as_it_was = QString("Plans(%1,Public B(Public B plan 2,Public B plan 10))").arg(kGroupA);
  QTest::newRow("nothing") << 1 << as_it_was;
  QTest::newRow("a plan renamed elsewhere")
      << 1 << "Plans(Public A(A1,new,Public A plan 10),Public B(Public B plan 2,Public B plan 10))";
  QTest::newRow("a group renamed elsewhere")
      << 1 << "Plans(Public A(new,Public A plan 2,Public A plan 10),Public B(Public B plan 2,Public B plan 10))";
  QTest::newRow("its plan renamed") << 2 << QString("Plans(%1,Public B(new,Public B plan 10))").arg(kGroupA);
  QTest::newRow("its plan deleted") << 2 << QString("Plans(%1,Public B(Public B plan 10))").arg(kGroupA);
  QTest::newRow("a plan comes in")
      << 2 << "Plans(Public A(A1,Public A plan 10),Public B(new,Public B plan 2,Public B plan 10))";
  QTest::newRow("a plan leaves")
      << 2 << "Plans(Public A(A1,Public A plan 2,Public A plan 10,new),Public B(Public B plan 10))";
}

void OvertakenExpansionsTest::OnlyWhatConcernsAnExpansionOvertakesIt() {
  QFETCH(int, fetches);
  const QString group_a = fixture_.Code("Public A"), group_b = fixture_.Code("Public B");
  const QString in_a = fixture_.Code("Public A plan 2"), in_b = fixture_.Code("Public B plan 2");
  const QMap<QString, std::function<void()>> changes = {
      {"nothing", [] {}},
      {"a plan renamed elsewhere", [&] { SavedElsewhere(in_a, "new", group_a); }},
      {"a group renamed elsewhere", [&] { Manager().OnViewGroupNameChanged(fixture_.Code("A1"), "new"); }},
      {"its plan renamed", [&] { SavedElsewhere(in_b, "new", group_b); }},
      {"its plan deleted",
       [&] {
         QCOMPARE(fixture_.InStore().DeletePlan(in_b), QString());
         Manager().OnViewGroupChildRemoved(in_b, ResourceData::RT_VIEW);
       }},
      {"a plan comes in", [&] { SavedElsewhere(in_a, "new", group_b); }},
      {"a plan leaves", [&] {
         SavedElsewhere(in_b, "new", group_a);
         Manager().OnViewGroupChildAdded(group_a, ResourceData::RT_VIEW);
       }}};
  Services().ForgetCalls();
  AskAndHold("GetPlansInGroup", AfterCall, [this] { controller_->OnExpandViewTreeItem(GroupRow("Public B")); });
  changes[QTest::currentDataTag()]();
  AnswerAll();
  QTEST(Outline(fixture_.Public()), "outline");
  QCOMPARE(FetchesOffTheGuiThread(), fetches);
}

// The row is opened with what holds, and what a change took out of the answer comes when the changes end.
void OvertakenExpansionsTest::OvertakenTimeAndAgain() {
  Services().ForgetCalls();
  log_->Take();
  OpenPartly();
  Overtake("name 6");
  Services().ReleaseAll();
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B(Public B plan 10,name 6))").arg(kGroupA));
  QCOMPARE(FetchesOffTheGuiThread(), 7);
  QCOMPARE(log_->Take(), QStringList({QString("loaded %1 1").arg(fixture_.Code("Public B")), "list Public B 0 1"}));
  QVERIFY(Services().ObserverOf(ResourceData::RT_VIEW, changing_.toStdString()));
  for (const auto& call : Services().Calls()) {
    QVERIFY(call.name == "GetPlanDetail" || !call.on_gui_thread);
  }
}

void OvertakenExpansionsTest::WhatWasLeftOutOutlastsAFailure() {
  OpenPartly();
  Services().Fail("GetPlansInGroup");
  const int calls = Services().Count("GetPlansInGroup");
  Services().ReleaseAll();
  QTRY_VERIFY(Services().Count("GetPlansInGroup") >= calls + 2);
  Services().Mend("GetPlansInGroup");
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B(Public B plan 10,name 5))").arg(kGroupA));
}

// In a new tree the user has not opened the row yet.
void OvertakenExpansionsTest::WhatWasLeftOutIsOfItsTree() {
  OpenPartly();
  QVERIFY(Manager().IsOpened(GroupRow("Public B")));
  GetPlansInGroupRequest request;
  request.group_index_code = fixture_.Code("Public B").toStdString();
  GetPlansInGroupResponse plans;
  QVERIFY(Services().GetPlansInGroup(request, plans));
  Reload();
  AnswerAll();
  Expand(Root());
  QVERIFY(!Manager().IsOpened(GroupRow("Public B")));
  Manager().ShowLeftOut(GroupRow("Public B"), {}, plans);
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A,Public B)"));
}

void OvertakenExpansionsTest::HowAFetchGoesOn_data() {
  QTest::addColumn<QString>("answers");
  QTest::addColumn<QString>("steps");
  const auto add = [](const char* name, const QString& answers, const QString& steps) {
    QTest::newRow(name) << answers << steps;
  };
  add("answered", "+", "finish");
  add("refused", "refused", "finish");
  add("no reason", "failed", "finish");
  add("the row has gone", "changed-gone", "finish");
  const QString changed = "changed changed changed changed changed ", partly = "again again again again partly ";
  const QString failed = "failed failed failed failed failed ", few = "later later later later later ";
  add("overtaken", changed + "changed +", partly + "partly finish");
  add("then refused", changed + "refused", partly + "drop");
  add("then no reason, a few times", changed + failed + "failed", partly + few + "drop");
  add("counted from the last answer", changed + failed + changed.left(8) + failed + "failed",
      partly + few + "partly " + few + "drop");
  add("then out of reach", changed + "away away away away away away failed failed failed failed failed",
      partly + few + "later later later later later drop");
  add("then the row has gone", changed + "changed-gone", partly + "drop");
  add("gone while out of reach", changed + "away-gone", partly + "drop");
}

void OvertakenExpansionsTest::HowAFetchGoesOn() {
  QFETCH(QString, answers);
  const QMap<QString, int> kinds = {{"refused", Refused}, {"failed", UnknownFailure}, {"away", Unavailable}};
  const QMap<FetchStep, QString> names = {{FetchStep::Finish, "finish"},
                                          {FetchStep::AskAgain, "again"},
                                          {FetchStep::ShowPartly, "partly"},
                                          {FetchStep::AskLater, "later"},
                                          {FetchStep::Drop, "drop"}};
  FetchCourse course;
  QStringList steps;
  for (const QString& answer : answers.split(' ')) {
    const QString what = answer.section('-', 0, 0);
    SubItems items;
    items.ok = !kinds.contains(what);
    items.error_kind = kinds.value(what);
    const FetchStep step = StepAfter(items, what == "changed", !answer.endsWith("gone"), course);
    course.is_shown |= step == FetchStep::ShowPartly;
    steps << names[step];
  }
  QTEST(steps.join(' '), "steps");
}

void OvertakenExpansionsTest::WhatOvertakesAnAnswer_data() {
  using Note = std::function<void(CChangeJournal&)>;
  QTest::addColumn<Note>("note");
  QTest::addColumn<bool>("overtaken");
  QTest::addColumn<QString>("left");
  const auto add = [](const char* name, bool overtaken, const char* left, const Note& note) {
    QTest::newRow(name) << note << overtaken << left;
  };
  add("nothing", false, "g1 p1 p2", [](auto&) {});
  add("a plan of others", false, "g1 p1 p2", [](auto& journal) { journal.NotePlan("p3", "g9"); });
  add("a plan with its group's code", false, "g1 p1 p2", [](auto& journal) { journal.NotePlan("g1", "g9"); });
  add("a plan comes in", true, "g1 p1 p2", [](auto& journal) { journal.NotePlan("p3", "g"); });
  add("a plan goes elsewhere", true, "g1 p1", [](auto& journal) { journal.NotePlan("p2", "g9"); });
  add("a group goes", true, "p1 p2", [](auto& journal) { journal.NoteGroup("g1", ""); });
  add("the group itself", true, "g1 p1 p2", [](auto& journal) { journal.NoteGroup("g", ""); });
  add("children of another", false, "g1 p1 p2", [](auto& journal) { journal.NoteChildrenOf("g1"); });
  add("its children", true, "g1 p1 p2", [](auto& journal) { journal.NoteChildrenOf("g"); });
  add("everything", true, "", [](auto& journal) { journal.NoteEverything(); });
  add("as many as are remembered", false, "g1 p1 p2", [](auto& journal) {
    for (int i = 0; i < CChangeJournal::kKept; ++i) {
      journal.NoteChildrenOf("g9");
    }
  });
  add("one more", true, "", [](auto& journal) {
    for (int i = 0; i <= CChangeJournal::kKept; ++i) {
      journal.NoteChildrenOf("g9");
    }
  });
}

void OvertakenExpansionsTest::WhatOvertakesAnAnswer() {
  QFETCH(std::function<void(CChangeJournal&)>, note);
  SubItems items;
  items.ok = true;
  for (const char* code : {"p1", "p2"}) {
    PlanBasicInfo plan;
    plan.index_code = code;
    items.plans.plans << plan;
  }
  PlanGroup group;
  group.index_code = "g1";
  items.groups.groups << group;
  items.records = ChildRecords::Of(items.groups.groups, items.plans.plans);
  CChangeJournal journal;
  journal.NotePlan("p1", "g");  // before the question
  const int asked_at = journal.Now();
  note(journal);
  const RecentChanges changes = journal.Since(asked_at);
  QTEST(IsOvertaken(items, "g", changes), "overtaken");
  const SubItems rest = WhatStillHolds(items, changes);
  QStringList left;
  for (const auto& held : rest.groups.groups) {
    left << held.index_code.c_str();
  }
  for (const auto& held : rest.plans.plans) {
    left << held.index_code.c_str();
  }
  QTEST(left.join(' '), "left");
  QStringList records;
  for (const auto& record : rest.records.of_groups + rest.records.of_plans) {
    records << record->Code();
  }
  QCOMPARE(records, left);  // none of which is made again
  QVERIFY(rest.groups.groups.isEmpty() || rest.groups.groups.isSharedWith(rest.records.groups));
  QVERIFY(rest.plans.plans.isEmpty() || rest.plans.plans.isSharedWith(rest.records.plans));
  QCOMPARE(rest.plans.plans.isSharedWith(items.plans.plans), left.join(' ').endsWith("p1 p2"));
  items.ok = false;  // what the host refuses is no news
  QVERIFY(!IsOvertaken(items, "g", changes));
}

QTEST_MAIN(OvertakenExpansionsTest)
#include "test_overtaken_expansions.moc"
