#include <QThreadPool>
#include <QtTest>
#include <algorithm>
#include <functional>

#include "controller_log.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "sub_items.h"
#include "view_model_data_manager.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::ChangedPlan;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::CRecordingServices;
using TarnTest::NewPlan;
using TarnTest::Outline;

Q_DECLARE_METATYPE(std::function<void(CChangeJournal&)>)

namespace {

constexpr auto AfterCall = CRecordingServices::AfterCall;
const char kGroupA[] = "Public A(A1,Public A plan 2,Public A plan 10)";

}  // namespace

// Rows move and vanish, trees reload and controllers die while the host still works on a request.
class StaleAnswersTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void RowMovedMeanwhile();
  void RowRemovedMeanwhile_data();
  void RowRemovedMeanwhile();
  void DeletedPlanDoesNotSurviveAReload();
  void ChangedWhileItsGroupLoads_data();
  void ChangedWhileItsGroupLoads();
  void OnlyWhatConcernsAnExpansionOvertakesIt_data();
  void OnlyWhatConcernsAnExpansionOvertakesIt();
  void OvertakenTimeAndAgain();
  void WhatOvertakesAnAnswer_data();
  void WhatOvertakesAnAnswer();
  void ReloadedRowTakesAdditions();
  void AnswerOfAnotherUser();
  void IndexesOfAProxy();
  void ControllerDies_data();
  void ControllerDies();
  void ASlotEndsTheController();
  void ChangesOfOneRowKeepTheirOrder();
  void OwnAnswerAfterANewerNotice_data();
  void OwnAnswerAfterANewerNotice();
  void OwnAnswerAfterItsGroupHasGone();
  void ANoticeIsFollowedWhenTheHostAnswers();
  void ChangesUnderEveryRootOutlastANotice_data();
  void ChangesUnderEveryRootOutlastANotice();
  void AChangeThatWaitedIsNotTheNextUsers_data();
  void AChangeThatWaitedIsNotTheNextUsers();

 private:
  CViewModelDataManager& Manager() { return CViewModelDataManager::Instance(); }
  QModelIndex Root() { return fixture_.Public()->index(0, 0); }
  /// Other requests may be held meanwhile.
  void Expand(const QPersistentModelIndex& row) {
    controller_->OnExpandViewTreeItem(row);
    QTRY_VERIFY(fixture_.Public()->AreChildrenFetched(row));
  }
  /// Sends a request that stays at the host until AnswerAll().
  void AskAndHold(const QString& call, CRecordingServices::HoldPoint point, const std::function<void()>& ask) {
    Services().Hold(call, point);
    ask();
    QVERIFY(Services().WaitUntilHeld(call));
  }
  void AnswerAll() {
    Services().ReleaseAll();
    CPlanFixture::Drain();
  }
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
  void Reload() {
    Manager().OnUpdateViewModelData();
    QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans"));
  }

  const int threads_ = QThreadPool::globalInstance()->maxThreadCount();
  std::unique_ptr<CStandardViewController> controller_;
  std::unique_ptr<CControllerLog> log_;
};

void StaleAnswersTest::init() {
  QThreadPool::globalInstance()->setMaxThreadCount(8);
  Open();
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  Expand(Root());
  Expand(GroupRow("Public A"));
  log_ = std::make_unique<CControllerLog>(controller_.get());
}

void StaleAnswersTest::cleanup() {
  AnswerAll();
  log_.reset();
  controller_.reset();
  Shut();
  QThreadPool::globalInstance()->setMaxThreadCount(threads_);
}

void StaleAnswersTest::RowMovedMeanwhile() {
  AskAndHold("UpdatePlanGroup", CRecordingServices::BeforeCall,
             [this] { controller_->UpdatePlanGroupName(GroupRow("Public B"), "renamed"); });
  // "Public B" goes to another place and another row takes its old one.
  QStandardItem* root = fixture_.Public()->item(0);
  root->insertRow(0, root->takeRow(1));
  AnswerAll();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(renamed,%1)").arg(kGroupA));
}

void StaleAnswersTest::RowRemovedMeanwhile_data() {
  QTest::addColumn<QString>("said");
  QTest::newRow("UpdatePlanGroup") << "renamed - x";
  QTest::newRow("DeletePlanGroup") << "group deleted -";
  QTest::newRow("AddPlanGroup") << "group added - x 0";
  QTest::newRow("GetPlansInGroup") << "list - 0 2";
}

void StaleAnswersTest::RowRemovedMeanwhile() {
  const QString call = QTest::currentDataTag();
  const QMap<QString, std::function<void(const QModelIndex&)>> requests = {
      {"UpdatePlanGroup", [this](const auto& row) { controller_->UpdatePlanGroupName(row, "x"); }},
      {"DeletePlanGroup", [this](const auto& row) { controller_->DeletePlanGroupByIndex(row); }},
      {"AddPlanGroup", [this](const auto& row) { controller_->AddPlanGroupByIndexName(row, "x"); }},
      {"GetPlansInGroup", [this](const auto& row) { controller_->OnExpandViewTreeItem(row); }}};
  AskAndHold(call, CRecordingServices::BeforeCall, [&] { requests[call](GroupRow("Public B")); });
  log_->Take();
  Manager().OnViewGroupChildRemoved(fixture_.Code("Public B"), ResourceData::RT_VIEW_GROUP);
  AnswerAll();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(%1)").arg(kGroupA));
  QTEST(log_->lines.value(0), "said");
}

void StaleAnswersTest::DeletedPlanDoesNotSurviveAReload() {
  const QString code = fixture_.Code("Public A plan 2");
  AskAndHold("DeletePlan", CRecordingServices::BeforeCall,
             [this] { controller_->DeletePlanByIndex(PlanRow("Public A plan 2")); });
  Reload();
  Expand(Root());
  Expand(GroupRow("Public A"));
  QVERIFY(PlanRow("Public A plan 2").isValid());  // the host still has it
  AnswerAll();
  for (CStandardPlanModel* model : fixture_.Models()) {
    QVERIFY(!model->FindItemByIndexCode(code, false));
  }
}

void StaleAnswersTest::ChangedWhileItsGroupLoads_data() {
  QTest::addColumn<QString>("success");
  QTest::newRow("deleted") << "tip 0 DeleteTheSuccess";
  QTest::newRow("moved") << "tip 0 SaveSuccessfulYCFI2BGO";
}

// What the host answered before the change would bring back what was there then.
void StaleAnswersTest::ChangedWhileItsGroupLoads() {
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

void StaleAnswersTest::OnlyWhatConcernsAnExpansionOvertakesIt_data() {
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

void StaleAnswersTest::OnlyWhatConcernsAnExpansionOvertakesIt() {
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
void StaleAnswersTest::OvertakenTimeAndAgain() {
  const QString group = fixture_.Code("Public B"), plan = fixture_.Code("Public B plan 2");
  Services().ForgetCalls();
  log_->Take();
  AskAndHold("GetPlansInGroup", AfterCall, [this] { controller_->OnExpandViewTreeItem(GroupRow("Public B")); });
  for (int fetch = 1; fetch <= 6; ++fetch) {
    SavedElsewhere(plan, qPrintable(QString("name %1").arg(fetch)), group);
    Services().Hold("GetPlanGroups", CRecordingServices::BeforeCall);
    Services().Release("GetPlansInGroup");
    QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
    const char* shown = fetch < 5 ? "Plans(%1,Public B)" : "Plans(%1,Public B(Public B plan 10))";
    QCOMPARE(Outline(fixture_.Public()), QString(shown).arg(kGroupA));
    Services().Hold("GetPlansInGroup", AfterCall);
    Services().Release("GetPlanGroups");
    QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  }
  QCOMPARE(FetchesOffTheGuiThread(), 7);
  Services().ReleaseAll();
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans(%1,Public B(Public B plan 10,name 6))").arg(kGroupA));
  QCOMPARE(log_->Take(), QStringList({QString("loaded %1 1").arg(group), "list Public B 0 1"}));
  QVERIFY(Services().ObserverOf(ResourceData::RT_VIEW, plan.toStdString()));
  for (const auto& call : Services().Calls()) {
    QVERIFY(call.name == "GetPlanDetail" || !call.on_gui_thread);
  }
}

void StaleAnswersTest::WhatOvertakesAnAnswer_data() {
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

void StaleAnswersTest::WhatOvertakesAnAnswer() {
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
  items.ok = false;  // what the host refuses is no news
  QVERIFY(!IsOvertaken(items, "g", changes));
}

void StaleAnswersTest::ReloadedRowTakesAdditions() {
  AskAndHold("GetPlanGroups", AfterCall, [this] { controller_->OnExpandViewTreeItem(Root()); });
  Reload();
  AnswerAll();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A,Public B)"));
  // The new root shows its children, so what is added to it must show, too.
  controller_->AddPlanGroupByIndexName(Root(), "added");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A,Public B,added)"));
}

void StaleAnswersTest::AnswerOfAnotherUser() {
  CStandardViewController own(fixture_.Own());
  const QPersistentModelIndex old_root(fixture_.Own()->index(0, 0));
  AskAndHold("GetPlanGroups", AfterCall, [&] { own.OnExpandViewTreeItem(old_root); });
  QString error;
  QVERIFY(fixture_.Store().LogIn("viewer", &error));
  QTRY_VERIFY(!old_root.isValid());  // the tree was loaded again, and its root has the same code
  QTRY_COMPARE(Outline(fixture_.Own()), QString("Plans"));
  AnswerAll();
  QCOMPARE(Outline(fixture_.Own()), QString("Plans"));
}

void StaleAnswersTest::IndexesOfAProxy() {
  CViewSortFilterProxyModel proxy(nullptr, false);
  CPlanFixture::Watch(&proxy);
  proxy.setSourceModel(fixture_.Public());
  AskAndHold("GetPlansInGroup", CRecordingServices::BeforeCall,
             [&] { controller_->OnExpandViewTreeItem(proxy.mapFromSource(GroupRow("Public B"))); });
  proxy.invalidate();
  Reload();
  log_->Take();
  AskAndHold("GetPlanGroups", CRecordingServices::BeforeCall,
             [&] { controller_->OnExpandViewTreeItem(proxy.index(0, 0)); });
  AnswerAll();
  QVERIFY(log_->lines.contains("list Plans 2 0"));
  QVERIFY(log_->lines.contains("list - 0 2") || log_->lines.contains("list Public B 0 2"));
  QVERIFY(Outline(&proxy).startsWith("Plans(Public A"));
}

void StaleAnswersTest::ASlotEndsTheController() {
  log_.reset();
  connect(controller_.get(), &CStandardViewController::SignalDeletePlanSucc, this, [this] { controller_.reset(); });
  controller_->DeletePlanByIndex(PlanRow("Public A plan 2"));
  QTRY_VERIFY(!controller_);
  QVERIFY(!PlanRow("Public A plan 2").isValid());
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  Services().Fail("GetPlanGroups", "no");
  connect(controller_.get(), &CStandardViewController::SignalFinishAnsyGetSubItem, this,
          [this] { controller_.reset(); });
  controller_->OnExpandViewTreeItem(GroupRow("Public B"));
  QTRY_VERIFY(!controller_);
}

void StaleAnswersTest::ControllerDies_data() {
  QTest::addColumn<bool>("with_model");
  QTest::newRow("alone") << false;
  QTest::newRow("with its model") << true;
}

void StaleAnswersTest::ControllerDies() {
  QFETCH(bool, with_model);
  auto model = std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "x"), nullptr);
  Manager().AddViewManagerModel(model.get());
  const QPointer<CStandardViewController> controller = new CStandardViewController(model.get());
  const QString before = Outline(fixture_.Public());
  for (const char* call : {"AddPlanGroup", "GetPlansInGroup", "GetPlanDetail"}) {
    Services().Hold(call);
  }
  controller->AddPlanGroupByIndexName(GroupRow("Public A"), "orphan");
  controller->OnExpandViewTreeItem(GroupRow("Public B"));
  controller->PlayPlanViewByIndexCode(fixture_.Code("Public A plan 2").toStdString());
  QVERIFY(Services().WaitUntilHeld("AddPlanGroup"));
  if (!with_model) {
    delete controller;
  }
  Manager().RemViewManagerModel(model.get());
  model.reset();
  QVERIFY(!controller);
  AnswerAll();
  QVERIFY(!fixture_.Code("orphan").isEmpty());   // the host did it
  QCOMPARE(Outline(fixture_.Public()), before);  // and no row came of it
}

void StaleAnswersTest::ChangesOfOneRowKeepTheirOrder() {
  CStandardViewController other(fixture_.Public());
  Services().Hold("UpdatePlanGroup");
  controller_->UpdatePlanGroupName(GroupRow("Public A"), "first");
  other.UpdatePlanGroupName(GroupRow("Public A"), "second");
  controller_->UpdatePlanGroupName(GroupRow("Public A"), "last");
  controller_->UpdatePlanGroupName(GroupRow("Public B"), "beside it");
  const auto asked = [this] {
    QStringList names;
    for (const auto& request : Services().Requests<UpdatePlanGroupRequest>()) {
      names << QString::fromStdString(request.name);
    }
    return names;
  };
  QTRY_VERIFY(asked().contains("beside it"));  // asked for last, it waits for none of the others
  QCOMPARE(asked().size(), 2);
  AnswerAll();
  QStringList names = asked();
  names.removeOne("beside it");
  QCOMPARE(names, QStringList({"first", "second", "last"}));
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(last(A1,Public A plan 2,Public A plan 10),beside it)"));
}

void StaleAnswersTest::OwnAnswerAfterANewerNotice_data() {
  QTest::addColumn<QStringList>("failing");
  QTest::newRow("the host says how it is") << QStringList();
  QTest::newRow("the host says so later") << QStringList{"GetPlanGroups", "GetPlansInGroup"};
  QTest::newRow("the host says later where a plan is") << QStringList{"GetPlanDetail"};
}

// Own changes are made; before their answers come, somebody else makes newer ones. The tree ends as the store does.
void StaleAnswersTest::OwnAnswerAfterANewerNotice() {
  QFETCH(QStringList, failing);
  Expand(GroupRow("Public B"));
  const QString renamed = fixture_.Code("Public B"), moved = fixture_.Code("Public A plan 2"),
                deleted = fixture_.Code("Public A plan 10");
  for (const char* call : {"UpdatePlanGroup", "UpdatePlan", "AddPlanGroup"}) {
    Services().Hold(call, AfterCall);
  }
  controller_->UpdatePlanGroupName(GroupRow("Public B"), "own name");
  controller_->UpdatePlanParam(ChangedPlan(moved, "own place", fixture_.Code("A1")), "");
  controller_->UpdatePlanParam(ChangedPlan(deleted, "own save", renamed), "");
  controller_->AddPlanGroupByIndexName(GroupRow("Public A"), "own group");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup") && Services().WaitUntilHeld("UpdatePlan", 2) &&
          Services().WaitUntilHeld("AddPlanGroup"));

  QCOMPARE(fixture_.InStore().RenameGroup(renamed, "their name"), QString());
  Manager().OnViewGroupNameChanged(renamed, "their name");
  QCOMPARE(fixture_.InStore().Update(ChangedPlan(moved, "their place", renamed)), QString());
  Manager().OnViewChanged(moved);
  QCOMPARE(fixture_.InStore().DeletePlan(deleted), QString());
  Manager().OnViewGroupChildRemoved(deleted, ResourceData::RT_VIEW);
  QCOMPARE(fixture_.InStore().DeleteGroup(fixture_.Code("own group")), QString());
  for (const QString& call : failing) {
    Services().Fail(call);
  }
  AnswerAll();
  for (const QString& call : failing) {
    Services().Mend(call);
  }
  QTRY_COMPARE(Outline(fixture_.Public()),
               QString("Plans(Public A(A1),their name(Public B plan 2,Public B plan 10,their place))"));
}

void StaleAnswersTest::OwnAnswerAfterItsGroupHasGone() {
  Expand(GroupRow("Public B"));
  const QString group = fixture_.Code("Public B"), plan = fixture_.Code("Public B plan 2");
  AskAndHold("UpdatePlan", AfterCall, [&] { controller_->UpdatePlanParam(ChangedPlan(plan, "saved", group), ""); });
  QCOMPARE(fixture_.InStore().DeleteGroup(group), QString());
  Manager().OnViewGroupNameChanged(fixture_.Code("A1"),
                                   "A1");  // a notice of something else, the group's is still to come
  AnswerAll();
  QVERIFY(!fixture_.Public()->FindItemByIndexCode(plan, false));
}

void StaleAnswersTest::ANoticeIsFollowedWhenTheHostAnswers() {
  Services().ForgetCalls();
  Services().Fail("GetPlanGroups", "never", view_plugin_protocol::Refused);
  Services().Fail("GetPlansInGroup");
  QCOMPARE(fixture_.InStore().AddGroup(fixture_.Code("Public A"), "their group"), QString());
  QCOMPARE(fixture_.InStore().AddPlan(fixture_.Code("Public A"), "their plan"), QString());
  Manager().OnViewGroupChildAdded(fixture_.Code("Public A"), ResourceData::RT_VIEW_GROUP);
  Manager().OnViewGroupChildAdded(fixture_.Code("Public A"), ResourceData::RT_VIEW);
  QTRY_VERIFY(Services().Count("GetPlansInGroup") >= 3);  // it fails once more in between
  QCOMPARE(Services().Count("GetPlanGroups"), 1);         // which was an answer
  Services().Mend("GetPlanGroups");
  Services().Mend("GetPlansInGroup");
  QTRY_COMPARE(Outline(fixture_.Public()),
               QString("Plans(Public A(A1,Public A plan 2,Public A plan 10,their plan),Public B)"));
}

void StaleAnswersTest::ChangesUnderEveryRootOutlastANotice_data() {
  QTest::addColumn<int>("theme");
  QTest::newRow("public") << int(PublicTheme);
  QTest::newRow("own") << int(OwnTheme);
  QTest::newRow("received") << int(ReceivedTheme);
}

// The look that follows the notice must find what was just added, renamed and saved directly under the root.
void StaleAnswersTest::ChangesUnderEveryRootOutlastANotice() {
  QFETCH(int, theme);
  CStandardPlanModel model(ViewManagerParam(static_cast<ThemeNodeType>(theme), "mine"), nullptr);
  Manager().AddViewManagerModel(&model);
  model.LoadPlanModel();
  QTRY_COMPARE(model.rowCount(), 1);
  const QPersistentModelIndex root = model.index(0, 0);
  const QString root_code = root.data(GroupIndexCodeRole).toString();
  CStandardViewController controller(&model);
  controller.OnExpandViewTreeItem(root);
  QTRY_VERIFY(model.AreChildrenFetched(root));
  Manager().OnSetGroupNodeLoaded(root_code, true);  // received rows are not marked by being expanded
  controller.AddPlanGroupByIndexName(root, "group");
  QTRY_VERIFY(Outline(&model).contains("group"));

  const char* const calls[] = {"AddPlanGroup", "UpdatePlanGroup", "AddPlan"};
  for (const char* call : calls) {
    Services().Hold(call, AfterCall);
  }
  AddPlanRequest plan = NewPlan("saved", root_code);
  plan.index_type = theme;
  controller.UpdatePlanGroupName(model.match(root, Qt::DisplayRole, "group", 1, Qt::MatchRecursive).value(0),
                                 "renamed");
  controller.AddPlanGroupByIndexName(root, "added");
  controller.AddPlanParam(plan);
  for (const char* call : calls) {
    QVERIFY2(Services().WaitUntilHeld(call), call);
  }
  Manager().OnViewGroupNameChanged(fixture_.Code("A1"), "A1");  // of something else
  AnswerAll();
  for (const char* name : {"renamed", "added", "saved"}) {
    QVERIFY2(Outline(&model).contains(name), qPrintable(name + (" in " + Outline(&model))));
  }
  Manager().RemViewManagerModel(&model);
}

void StaleAnswersTest::AChangeThatWaitedIsNotTheNextUsers_data() {
  QTest::addColumn<QString>("failing");
  QTest::addColumn<QString>("reason");
  const QString line_is_down = "tip 1 The line is down";
  QTest::newRow("switched") << "" << QString("the user was switched");
  QTest::newRow("not known when asked for") << "asked" << line_is_down;
  QTest::newRow("not known at its turn") << "turn" << line_is_down;
  QTest::newRow("never known") << "asked, turn" << line_is_down;
}

void StaleAnswersTest::AChangeThatWaitedIsNotTheNextUsers() {
  QFETCH(QString, failing);
  QFETCH(QString, reason);
  const auto fail_at = [&](const char* time) {
    failing.contains(time) ? Services().Fail("GetCurrentUser", "The line is down") : Services().Mend("GetCurrentUser");
  };
  const QString code = fixture_.Code("Public A");
  const QModelIndex row = GroupRow("Public A");
  AskAndHold("UpdatePlanGroup", AfterCall, [&] { controller_->UpdatePlanGroupName(row, "first"); });
  fail_at("asked");
  controller_->UpdatePlanGroupName(row, "waits");
  fail_at("turn");
  QString error;
  QVERIFY(!failing.isEmpty() || fixture_.Store().LogIn("viewer", &error));
  AnswerAll();
  QCOMPARE(Services().Requests<UpdatePlanGroupRequest>().size(), 1u);  // the host was not asked in another's name
  QCOMPARE(fixture_.Code("first"), code);
  const QString said = log_->lines.join('\n');
  QVERIFY2(said.contains(reason), qPrintable(said));
  QCOMPARE(said.contains("switched"), failing.isEmpty());
}

QTEST_MAIN(StaleAnswersTest)
#include "test_stale_answers.moc"
