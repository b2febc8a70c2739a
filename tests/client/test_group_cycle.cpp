#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QtTest>

#include "client_desk.h"
#include "history/play_history.h"

using TarnTest::CPlanFixture;

class GroupCycleTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlaysAllPlansInTurnAndAround();
  void StepsAndHoldsByHand();
  void HoldKeepsThePlanThatIsOn();
  void LeavesTheCurrentRowToTheUser();
  void FollowsChangesOfTheGroup();
  void SkipsPlansThatFail();
  void TriesAgainWhatFailsForAWhile_data();
  void TriesAgainWhatFailsForAWhile();
  void NamesGroupsThatAreNotLoaded();
  void FollowsItsSwitch();
  void EndsWhenTheUserWantsSomethingElse();
  void EmptyAndVanishedGroupsEndWithOneMessage();

 private:
  void Start(const QString& group);
  /// The wall bar's text about the cycle.
  QString Progress() const { return window_->findChild<QLabel*>("wall_cycle")->accessibleName(); }
  void Turn(const QString& expected);
  void Delete(const QString& plan);
  void Save(const QString& plan, const std::list<view_plugin_protocol::PlanPage>& pages);
};

void GroupCycleTest::Start(const QString& group) {
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code(group), 20);
}

void GroupCycleTest::Turn(const QString& expected) {
  clock_->EndTurn();
  QTRY_COMPARE(Wall().PlanName(), expected);
}

void GroupCycleTest::Delete(const QString& plan) {
  view_plugin_protocol::DeletePlanResquest request;
  request.plan_index_code = Code(plan);
  view_plugin_protocol::DeletePlanResponse response;
  QVERIFY(fixture_.Store().DeletePlan(request, response));
}

void GroupCycleTest::Save(const QString& plan, const std::list<view_plugin_protocol::PlanPage>& pages) {
  view_plugin_protocol::UpdatePlanRequest request;
  request.plan_index_code = Code(plan);
  request.plan_name = plan.toStdString();
  request.pages = pages;
  view_plugin_protocol::UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
}

void GroupCycleTest::PlaysAllPlansInTurnAndAround() {
  Open({});  // nothing of the group is loaded in the tree
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QCOMPARE(clock_->Seconds(), 20);
  QVERIFY2(Progress().contains("Public A") && Progress().contains("1 of 4"), qPrintable(Progress()));
  for (const char* next : {"Public A plan 10", "A1 plan 2", "A1 plan 10", "Public A plan 2"}) {
    Turn(next);
  }
  QVERIFY(Progress().contains("1 of 4"));
  QCOMPARE(window_->History().rowCount(), 0);
}

void GroupCycleTest::StepsAndHoldsByHand() {
  Open();
  view_plugin_protocol::PlanPage first, second;
  first.page_no = 1;
  second.page_no = 2;
  first.dwell_seconds = second.dwell_seconds = 15;
  Save("Public A plan 10", {first, second});
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 10"));
  QCOMPARE(clock_->Seconds(), 30);  // both pages are shown
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QVERIFY(Wall().PageNumber() == 2 && clock_->Seconds() == 15);
  QTest::keyClick(&Wall(), Qt::Key_Space);
  QVERIFY(clock_->IsPaused());
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QVERIFY(clock_->IsPaused() && Wall().IsHeld() && clock_->Seconds() == 20);
  // Back over a plan that has gone, and around the beginning; what time asks for waits for the user's step.
  Delete("Public A plan 10");
  fixture_.Services().Hold("GetPlanDetail");
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  clock_->EndTurn();
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 10"));
  QVERIFY2(Progress().contains("3 of 3"), qPrintable(Progress()));
  Delete("A1 plan 10");
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
}

void GroupCycleTest::HoldKeepsThePlanThatIsOn() {
  Open();
  Start("Public B");
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  fixture_.Services().Hold("GetPlanDetail");
  clock_->EndTurn();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  auto* sign = window_->findChild<QLabel*>("wall_fetch_sign");
  QTRY_VERIFY(sign->isVisible() && sign->accessibleName().contains("next plan"));
  QTest::keyClick(&Wall(), Qt::Key_Space);
  QVERIFY(!sign->isVisible());
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QVERIFY(clock_->IsPaused() && clock_->Seconds() == 1);
  QTest::keyClick(&Wall(), Qt::Key_Space);
  QVERIFY(!clock_->IsPaused());
  Turn("Public B plan 10");
}

// Or F2 and Delete would hit another row than the one in front of him.
void GroupCycleTest::LeavesTheCurrentRowToTheUser() {
  Open({});
  Tree()->ExpandAsync(Row("Public B"));
  QTRY_VERIFY(Row("Public B plan 2").isValid());
  Tree()->setCurrentIndex(Row("Public A"));
  Start("Public B");
  QTRY_COMPARE(MarkedRows(), QString("Public B plan 2"));
  Turn("Public B plan 10");
  QCOMPARE(MarkedRows(), QString("Public B plan 10"));
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));
  // The mark comes back to a row that is made again, and is there for rows that are loaded later.
  view_plugin_protocol::UpdatePlanRequest rename;
  rename.plan_index_code = Code("Public B plan 10");
  rename.plan_name = "Public B renamed";
  rename.pages = Wall().Plan().pages;
  window_->Family(0).Controller()->UpdatePlanParam(rename, "Public B plan 10");
  QTRY_COMPARE(MarkedRows(), QString("Public B renamed"));
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));

  // Hits of a search show it as well.
  auto* field = window_->Family(0).Panel()->findChild<QLineEdit*>("view_location_line_edit");
  auto* hits = window_->Family(0).Panel()->findChild<QListView*>("search_list_view");
  field->setText("Public B plan 2");
  QTest::keyClick(field, Qt::Key_Return);
  QTRY_COMPARE(hits->model()->rowCount(), 1);
  const auto icon = [hits] {
    return hits->model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage();
  };
  const QImage before = icon();
  Turn("Public B plan 2");
  QVERIFY(icon() != before);
  field->clear();
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));

  Start("Own C");
  QTRY_COMPARE(Wall().PlanName(), QString("Own C plan 2"));
  QCOMPARE(MarkedRows(), QString());
  window_->ShowFamily(1);
  Tree(1)->ExpandAsync(Row("Own C", 1));
  QTRY_COMPARE(MarkedRows(), QString("Own C plan 2"));
}

void GroupCycleTest::FollowsChangesOfTheGroup() {
  Open();
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  Delete("Public A plan 2");
  Turn("Public A plan 10");
  QTRY_VERIFY(Progress().contains("1 of 3"));
  view_plugin_protocol::AddPlanRequest request;
  request.plan_name = "Public A late";
  request.parent_index_code = Code("Public A");
  request.pages = Wall().Plan().pages;
  view_plugin_protocol::AddPlanResponse added;
  QVERIFY(fixture_.Store().AddPlan(request, added));
  Turn("Public A late");
  QTRY_VERIFY(Progress().contains("2 of 4"));
  Delete("Public A late");  // from the middle: it goes on after it
  Delete("A1 plan 2");
  Turn("A1 plan 10");
  QTRY_VERIFY(Progress().contains("2 of 2"));
}

void GroupCycleTest::SkipsPlansThatFail() {
  Open();
  Start("Public B");
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  // It goes between the listing and the fetch.
  fixture_.Services().Hold("GetPlanDetail");
  clock_->EndTurn();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  Delete("Public B plan 10");
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(Tip().contains("Public B plan 10"));
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QCOMPARE(clock_->Seconds(), 20);
}

void GroupCycleTest::TriesAgainWhatFailsForAWhile_data() {
  QTest::addColumn<QString>("call");
  QTest::addColumn<int>("page_seconds");
  QTest::newRow("listed but not fetched") << "GetPlanDetail" << 5;
  QTest::newRow("plans not to be listed") << "GetPlansInGroup" << 5;
  QTest::newRow("groups not to be listed") << "GetPlanGroups" << 5;
  QTest::newRow("after a plan that has shown its pages for long") << "GetPlanDetail" << 300;
}

// No one may be there to start it again.
void GroupCycleTest::TriesAgainWhatFailsForAWhile() {
  QFETCH(QString, call);
  QFETCH(int, page_seconds);
  Open();
  std::list<view_plugin_protocol::PlanPage> pages(2, Stored("Public B plan 2").pages.front());
  pages.front().dwell_seconds = pages.back().dwell_seconds = page_seconds;
  Save("Public B plan 2", pages);
  // Nothing was shown yet: whoever has started it hears of it at once.
  fixture_.Services().Fail(call, "The disk is tired");
  Start("Public B");
  QTRY_COMPARE(Tip(), QString("The disk is tired"));
  QVERIFY(clock_->Seconds() == 0 && Progress().isEmpty());
  fixture_.Services().Mend(call);
  ForgetTips();

  Start("Public B");
  QTRY_VERIFY(Progress().contains("1 of 2"));
  QCOMPARE(clock_->Seconds(), qMax(20, 2 * page_seconds));
  fixture_.Services().Fail(call, "The disk is tired");
  fixture_.Log().Clear();
  for (int turn = 0; turn < 2; ++turn) {
    clock_->EndTurn();
    QCOMPARE(clock_->Seconds(), 0);
    QTRY_COMPARE(clock_->Seconds(), 20);
  }
  QVERIFY2(Tip().contains("The disk is tired"), qPrintable(Tip()));
  const QStringList tips = fixture_.Log().Lines().filter("tried again");  // also those that wait to be shown
  QCOMPARE(tips.size(), 1);                                               // not at every turn
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QVERIFY(Progress().contains("1 of 2"));
  fixture_.Services().Mend(call);
  Turn("Public B plan 10");

  // What is gone for good ends it, also in the middle.
  view_plugin_protocol::DeletePlanGroupRequest request;
  request.index_code = Code("Public B");
  view_plugin_protocol::DeletePlanGroupResponse response;
  QVERIFY(fixture_.Store().DeletePlanGroup(request, response));
  ForgetTips();
  clock_->EndTurn();
  QTRY_VERIFY2(Tip().contains("group does not exist"), qPrintable(Tip()));
  QVERIFY(clock_->Seconds() == 0 && Progress().isEmpty());
}

void GroupCycleTest::NamesGroupsThatAreNotLoaded() {
  Open({});
  QVERIFY(!Row("A1").isValid());
  Start("A1");
  QTRY_VERIFY2(Progress().contains("Group A1") && Progress().contains("1 of 2"), qPrintable(Progress()));
  // The answer for a group comes too late to name the next one.
  fixture_.Services().Hold("GetPlanGroups", TarnTest::CRecordingServices::AfterCall);
  Start("C1");
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanGroups"));
  Start("Public B");
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY2(Progress().contains("Group Public B"), qPrintable(Progress()));
}

void GroupCycleTest::FollowsItsSwitch() {
  Open({{"load_all", 1}, {"group_cycle", 0}});
  Play("Public A plan 2");
  Start("Public B");
  QTRY_VERIFY2(Tip().contains("switched off"), qPrintable(Tip()));
  CPlanFixture::Drain();
  QVERIFY(Wall().PlanName() == "Public A plan 2" && Progress().isEmpty());
}

void GroupCycleTest::EndsWhenTheUserWantsSomethingElse() {
  Open();
  Start("Public B");
  QTRY_VERIFY(Progress().contains("1 of 2"));
  // The wish ends it at once: a turn that is under way must not come after the plan that was wished for.
  fixture_.Services().Hold("GetPlanDetail");
  clock_->EndTurn();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  window_->Player().Play(Code("Public A plan 2"));
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail", 2));
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QVERIFY(Progress().isEmpty() && clock_->Seconds() == 0);

  Start("Public B");
  QTRY_VERIFY(Progress().contains("1 of 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(!Wall().IsPlaying() && Progress().isEmpty());

  // And the other way round: what was asked for before the cycle does not end it.
  fixture_.Services().Hold("GetPlanDetail");
  window_->Player().Play(Code("Public A plan 2"));
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  Start("Public B");
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail", 2));
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(Progress().contains("1 of 2"));
  CPlanFixture::Drain();
  QVERIFY(Wall().PlanName() == "Public B plan 2" && clock_->Seconds() == 20);
  QTest::keyClick(&Wall(), Qt::Key_Escape);

  // Also before the first plan has come.
  fixture_.Services().Hold("GetPlansInGroup");
  Start("Public B");
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlansInGroup"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying());
}

void GroupCycleTest::EmptyAndVanishedGroupsEndWithOneMessage() {
  Open();
  Play("Public A plan 2");
  Delete("Public B plan 2");
  Delete("Public B plan 10");
  Start("Public B");
  QTRY_VERIFY(Tip().contains("no plans"));
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  ForgetTips();
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle("987654", 20);
  QTRY_VERIFY(Tip().contains("group does not exist"));
  QVERIFY(Progress().isEmpty());
}

QTEST_MAIN(GroupCycleTest)
#include "test_group_cycle.moc"
