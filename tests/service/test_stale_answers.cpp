#include <QtTest>
#include <functional>

#include "held_request_test.h"
#include "plan_item_role.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::ChangedPlan;
using TarnTest::CHeldRequestTest;
using TarnTest::CPlanFixture;
using TarnTest::CRecordingServices;
using TarnTest::NewPlan;
using TarnTest::Outline;

// Rows move and vanish, trees reload and controllers die while the host still works on a request.
class StaleAnswersTest : public CHeldRequestTest {
  Q_OBJECT
 private Q_SLOTS:
  void RowMovedMeanwhile();
  void RowRemovedMeanwhile_data();
  void RowRemovedMeanwhile();
  void DeletedPlanDoesNotSurviveAReload();
  void ReloadedRowTakesAdditions();
  void AnswerOfAnotherUser();
  void IndexesOfAProxy();
  void ControllerDies_data();
  void ControllerDies();
  void ASlotEndsTheController();
  void ChangesOfOneRowKeepTheirOrder();
  void OwnAnswerAfterNewerNotice_data();
  void OwnAnswerAfterNewerNotice();
  void OwnAnswerAfterItsGroupHasGone();
  void ANoticeIsFollowedWhenTheHostAnswers();
  void ChangesUnderEveryRootOutlastANotice_data();
  void ChangesUnderEveryRootOutlastANotice();
  void AChangeThatWaitedIsNotTheNextUsers_data();
  void AChangeThatWaitedIsNotTheNextUsers();
};

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
  QVERIFY(fixture_.Store().LogIn({"viewer"}).IsDone());
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

void StaleAnswersTest::OwnAnswerAfterNewerNotice_data() {
  QTest::addColumn<QStringList>("failing");
  QTest::newRow("the host says how it is") << QStringList();
  QTest::newRow("the host says so later") << QStringList{"GetPlanGroups", "GetPlansInGroup"};
  QTest::newRow("the host says later where a plan is") << QStringList{"GetPlanDetail"};
}

// Own changes are made; before their answers come, somebody else makes newer ones. The tree ends as the store does.
void StaleAnswersTest::OwnAnswerAfterNewerNotice() {
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
  QVERIFY(!failing.isEmpty() || fixture_.Store().LogIn({"viewer"}).IsDone());
  AnswerAll();
  QCOMPARE(Services().Requests<UpdatePlanGroupRequest>().size(), 1u);  // the host was not asked in another's name
  QCOMPARE(fixture_.Code("first"), code);
  const QString said = log_->lines.join('\n');
  QVERIFY2(said.contains(reason), qPrintable(said));
  QCOMPARE(said.contains("switched"), failing.isEmpty());
}

QTEST_MAIN(StaleAnswersTest)
#include "test_stale_answers.moc"
