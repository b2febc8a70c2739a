#include <QLabel>
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

  ForgetTips();
  fixture_.Services().Fail("GetPlanDetail", "The disk is tired");
  clock_->EndTurn();
  QTRY_COMPARE(Tip(), QString("The disk is tired"));
  QVERIFY(clock_->Seconds() == 0 && Progress().isEmpty());
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
