#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

#include "client_desk.h"
#include "history/play_history.h"

using TarnTest::CPlanFixture;

class GroupCycleTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlaysAllPlansInTurnAndAround();
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
  QTest::newRow("listed but not fetched") << "GetPlanDetail";
  QTest::newRow("plans not to be listed") << "GetPlansInGroup";
  QTest::newRow("groups not to be listed") << "GetPlanGroups";
}

// Nobody may be there to start it anew.
void GroupCycleTest::TriesAgainWhatFailsForAWhile() {
  QFETCH(QString, call);
  Open();
  // Nothing was shown yet: whoever has started it hears of it at once.
  fixture_.Services().Fail(call, "The disk is tired");
  Start("Public B");
  QTRY_COMPARE(Tip(), QString("The disk is tired"));
  QVERIFY(clock_->Seconds() == 0 && Progress().isEmpty());
  fixture_.Services().Mend(call);
  ForgetTips();

  Start("Public B");
  QTRY_VERIFY(Progress().contains("1 of 2"));
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
