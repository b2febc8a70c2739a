#include <QAbstractButton>
#include <QSignalSpy>
#include <QtTest>

#include "automatic_desk.h"

using TarnPlanView::CAutoPlanHelper;
using TarnTest::CPlanFixture;
using namespace view_plugin_protocol;

// Timed plans over a switch of user.
class AutomaticPlanUsersTest : public TarnTest::CAutomaticDesk {
  Q_OBJECT

 private Q_SLOTS:
  void AnotherUserHasOtherPlans();
  void AnotherUserGetsNoOwnPlansOfTheFirst();
  void AnUnansweredPlanStartsLate_data();
  void AnUnansweredPlanStartsLate();
  void WhatComesBeforeTheAnswer_data();
  void WhatComesBeforeTheAnswer();

 private:
  /// A timed own plan of a user who has just logged in again.
  void BeginAfterSwitch();
};

void AutomaticPlanUsersTest::BeginAfterSwitch() {
  Begin();
  Schedule("Own C plan 2", "09:00:00", "10:00:00");
  for (const char* user : {"viewer", "operator"}) {
    window_->SwitchUser(user);
    WaitForPlans();
  }
  CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
}

void AutomaticPlanUsersTest::AnotherUserHasOtherPlans() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  QVERIFY(Wall().IsPlaying());
  window_->SwitchUser("viewer");
  QVERIFY(!Wall().IsPlaying());
  WaitForPlans();
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
}

void AutomaticPlanUsersTest::AnotherUserGetsNoOwnPlansOfTheFirst() {
  Begin();
  Schedule("Own C plan 2", "09:00:00", "10:00:00");
  window_->SwitchUser("viewer");
  WaitForPlans();
  fixture_.Services().Fail("GetPlanDetail", "The line is down");
  CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
  At("09:00:00");
  TarnTest::CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying());
  fixture_.Services().Mend("GetPlanDetail");
  TickPlayer();
  TarnTest::CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying());
  window_->SwitchUser("operator");
  WaitForPlans();
  TickPlayer();
  QTRY_COMPARE(Wall().PlanName(), QString("Own C plan 2"));  // the same day, though it was announced once only
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
  NextDay();
  CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
  At("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("Own C plan 2"));
}

void AutomaticPlanUsersTest::AnUnansweredPlanStartsLate_data() {
  QTest::addColumn<QString>("answered");
  QTest::addColumn<bool>("starts");
  QTest::newRow("at once") << "09:00:01" << true;
  QTest::newRow("last second") << "09:59:59" << true;
  QTest::newRow("past its end") << "10:00:00" << false;
}

void AutomaticPlanUsersTest::AnUnansweredPlanStartsLate() {
  QFETCH(QString, answered);
  QFETCH(bool, starts);
  BeginAfterSwitch();
  fixture_.Services().Fail("GetPlanDetail", "The line is down");
  At("09:00:00");
  CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying());
  Set(Now().date(), QTime::fromString(answered));
  fixture_.Services().Mend("GetPlanDetail");
  TickPlayer();
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), QString(starts ? "Own C plan 2" : ""));
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
}

void AutomaticPlanUsersTest::WhatComesBeforeTheAnswer_data() {
  QTest::addColumn<QString>("meanwhile");
  QTest::addColumn<QString>("afterwards");
  QTest::newRow("nothing") << QString() << "Own C plan 2";
  QTest::newRow("default view") << "default view"
                                << "Own C plan 2";
  QTest::newRow("another timed plan") << "timed"
                                      << "A1 plan 2";
  QTest::newRow("a plan of the user's") << "play"
                                        << "Public B plan 2";
  QTest::newRow("the user stops") << "escape" << QString();
  QTest::newRow("its end") << "end" << QString();
  QTest::newRow("its end is announced") << "announced end" << QString();
  QTest::newRow("another user") << "switch" << QString();
  QTest::newRow("another beginning") << "times 09:30:00 10:00:00" << QString();
  QTest::newRow("another end") << "times 09:00:00 09:30:00" << QString();
  QTest::newRow("no longer timed") << "times 09:00:00 10:00:00 off" << QString();
}

void AutomaticPlanUsersTest::WhatComesBeforeTheAnswer() {
  QFETCH(QString, meanwhile);
  QFETCH(QString, afterwards);
  BeginAfterSwitch();
  fixture_.Services().Hold("GetPlanDetail");
  At("09:00:00");
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  if (meanwhile == "default view") {
    window_->Player().Play(Code("Public B plan 2"), TarnClient::PlayOrigin::DefaultView);
  } else if (meanwhile == "timed") {
    GetPlanDetailResponse plan = Stored("A1 plan 2");
    plan.end_time = "09:30:00";
    Q_EMIT CAutoPlanHelper::Instance().signalStartPlanAutoRun(plan);
  } else if (meanwhile == "play") {
    window_->Player().Play(Code("Public B plan 2"), TarnClient::PlayOrigin::GroupCycle);
  } else if (meanwhile == "escape") {
    QTest::keyClick(&Wall(), Qt::Key_Escape);
  } else if (meanwhile == "end") {
    Set(Now().date(), QTime(10, 0));
  } else if (meanwhile == "announced end") {
    Q_EMIT CAutoPlanHelper::Instance().signalStopPlanAutoRun();
  } else if (meanwhile == "switch") {
    window_->SwitchUser("viewer");
  } else if (meanwhile.startsWith("times")) {
    UpdatePlanRequest changed;
    changed.plan_index_code = Code("Own C plan 2");
    changed.plan_name = "Own C plan 2";
    changed.auto_play = !meanwhile.endsWith("off");
    changed.begin_time = meanwhile.section(' ', 1, 1).toStdString();
    changed.end_time = meanwhile.section(' ', 2, 2).toStdString();
    UpdatePlanResponse response;
    QVERIFY(fixture_.Store().UpdatePlan(changed, response));
  }
  fixture_.Services().ReleaseAll();
  WaitForPlans();
  TickPlayer();
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), afterwards);
}

QTEST_MAIN(AutomaticPlanUsersTest)
#include "test_automatic_plan_users.moc"
