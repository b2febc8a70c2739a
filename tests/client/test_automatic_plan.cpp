#include <QAbstractButton>
#include <QSignalSpy>
#include <QtTest>

#include "automatic_desk.h"

using TarnPlanView::CAutoPlanHelper;
using TarnTest::CPlanFixture;
using namespace view_plugin_protocol;

namespace {

constexpr int kNextPlanMs = 1500;  // how long the player leaves the wall to a timed plan that may come next

}  // namespace

// Timed plans from the store to the wall.
class AutomaticPlanTest : public TarnTest::CAutomaticDesk {
  Q_OBJECT

 private Q_SLOTS:
  void StartsAndStopsOnTime();
  void OnceADay();
  void AManualPlayWins();
  void AWishOnItsWayWins();
  void AWishOutlivesTheEnd_data();
  void AWishOutlivesTheEnd();
  void StoppingTakesBackAWish_data();
  void StoppingTakesBackAWish();
  void TakesThePlaceOfTheDefaultView_data();
  void TakesThePlaceOfTheDefaultView();
  void WhatWasThereBeforeComesBack_data();
  void WhatWasThereBeforeComesBack();
  void AFailedWishKeepsNothingAway_data();
  void AFailedWishKeepsNothingAway();
  void AWishAskedForTwiceOutlivesOneFailure();
  void AVanishedPlanStopsAtItsEnd();
  void StopIsAnnouncedWhicheverClockTicksFirst();
  void ChangedTimesTakeEffect_data();
  void ChangedTimesTakeEffect();
  void FollowsAnotherTimedPlan();
  void FollowsAnotherTimedPlanAfterAStop();
};

void AutomaticPlanTest::StartsAndStopsOnTime() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("08:59:59");
  QVERIFY(!Wall().IsPlaying());
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QTRY_COMPARE(MarkedRows(), QString("A1 plan 2"));
  CPlanFixture::Drain();
  QVERIFY(Logged().size() == 1 && Logged()[0].automatic);
  At("09:59:59");
  QVERIFY(Wall().IsPlaying());
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
  QVERIFY(!CAutoPlanHelper::Instance().GetPlanDisplayState());
  NextDay();
  CAutoPlanHelper::Instance().CheckAutoRunPlan();
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
}

void AutomaticPlanTest::OnceADay() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  QTest::keyClick(&Wall(), Qt::Key_Escape);  // the user has had enough of it
  QVERIFY(!Wall().IsPlaying());
  At("09:30:00");
  CAutoPlanHelper::Instance().CheckAutoRunPlan();
  At("09:31:00");
  QVERIFY(!Wall().IsPlaying());
  Play("Public B plan 2");
  At("10:00:00");
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
}

void AutomaticPlanTest::AManualPlayWins() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  Play("Public B plan 2");
  At("09:00:00");  // what the user plays is not taken off the wall
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  At("10:00:00");
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);

  Schedule("A1 plan 2", "11:00:00", "12:00:00");
  At("11:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  Play("Public B plan 2");  // in mid-run
  At("11:30:00");
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  At("12:00:00");
  At("12:00:01");
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));

  Schedule("A1 plan 2", "13:00:00", "14:00:00");
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code("Public B"), 20);
  QTRY_COMPARE(clock_->Seconds(), 20);
  At("13:00:00");  // a cycle that the user has begun counts as well
  QVERIFY(Wall().PlanName() != "A1 plan 2" && clock_->Seconds() == 20);
}

void AutomaticPlanTest::AWishOnItsWayWins() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  fixture_.Services().Hold("GetPlanDetail");
  window_->Player().Play(Code("Public B plan 2"));
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  At("10:00:00");
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
}

void AutomaticPlanTest::AWishOutlivesTheEnd_data() {
  QTest::addColumn<bool>("group");
  QTest::newRow("plan") << false;
  QTest::newRow("group") << true;
}

void AutomaticPlanTest::AWishOutlivesTheEnd() {
  QFETCH(bool, group);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  fixture_.Services().Hold("GetPlanDetail");
  if (group) {
    Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code("Public B"), 20);
  } else {
    window_->Player().Play(Code("Public B plan 2"));
  }
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QCOMPARE(clock_->Seconds(), group ? 20 : 0);
}

void AutomaticPlanTest::StoppingTakesBackAWish_data() {
  QTest::addColumn<QString>("by");
  QTest::newRow("button") << "button";
  QTest::newRow("key on the wall") << "wall";
  QTest::newRow("key in the tree") << "tree";
}

void AutomaticPlanTest::StoppingTakesBackAWish() {
  QFETCH(QString, by);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  fixture_.Services().Hold("GetPlanDetail");
  window_->Player().Play(Code("Public B plan 2"));
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  if (by == "button") {
    window_->findChild<QAbstractButton*>("wall_stop_btn")->click();
  } else {
    QTest::keyClick(by == "wall" ? static_cast<QWidget*>(&Wall()) : Tree(), Qt::Key_Escape);
  }
  QVERIFY(!Wall().IsPlaying());
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying() && !window_->Player().State().on_its_way);
}

void AutomaticPlanTest::TakesThePlaceOfTheDefaultView_data() {
  QTest::addColumn<QString>("target");
  QTest::addColumn<int>("type");
  QTest::addColumn<bool>("arrived");
  QTest::newRow("plan") << "Public B plan 2" << 16000 << true;
  QTest::newRow("group") << "Public B" << 16001 << true;
  QTest::newRow("plan on its way") << "Public B plan 2" << 16000 << false;
  QTest::newRow("group on its way") << "Public B" << 16001 << false;
}

// Otherwise a client that has a default view would never run a timed plan.
void AutomaticPlanTest::TakesThePlaceOfTheDefaultView() {
  QFETCH(QString, target);
  QFETCH(int, type);
  QFETCH(bool, arrived);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  StoreDefaultView(target, type);
  if (!arrived) {
    fixture_.Services().Hold("GetPlanDetail");
  }
  window_->Player().OpenDefaultView();
  if (arrived) {
    QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  } else {
    QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  }
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QCOMPARE(clock_->Seconds(), 0);
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
  TickPlayer(kNextPlanMs);
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QTRY_COMPARE(clock_->Seconds() > 0, type == 16001);
}

void AutomaticPlanTest::WhatWasThereBeforeComesBack_data() {
  QTest::addColumn<QString>("meanwhile");
  QTest::addColumn<QString>("afterwards");
  QTest::newRow("two timed plans") << "another"
                                   << "Public B plan 2";
  QTest::newRow("stopped by the user") << "stop" << QString();
  QTest::newRow("played by the user") << "play"
                                      << "Public A plan 2";
  QTest::newRow("played and stopped by the user") << "play and stop" << QString();
  QTest::newRow("nothing before") << "" << QString();
}

void AutomaticPlanTest::WhatWasThereBeforeComesBack() {
  QFETCH(QString, meanwhile);
  QFETCH(QString, afterwards);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  StoreDefaultView("Public B plan 2", 16000);
  if (!meanwhile.isEmpty()) {
    window_->Player().OpenDefaultView();
    QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  }
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  if (meanwhile.startsWith("play")) {
    Play("Public A plan 2");
  }
  if (meanwhile.endsWith("stop")) {
    QTest::keyClick(&Wall(), Qt::Key_Escape);
  }
  if (meanwhile == "another") {
    Schedule("A1 plan 10", "10:00:00", "11:00:00");
    At("10:00:00");
    At("10:00:01");
    TickPlayer(kNextPlanMs);
    CPlanFixture::Drain();
    QCOMPARE(Wall().PlanName(), QString("A1 plan 10"));
    At("11:00:00");
  } else {
    At("10:00:00");
  }
  TickPlayer(kNextPlanMs);
  CPlanFixture::Drain();
  QTRY_COMPARE(Wall().PlanName(), afterwards);
}

void AutomaticPlanTest::AFailedWishKeepsNothingAway_data() {
  QTest::addColumn<QString>("wish");
  QTest::addColumn<bool>("at_the_end");
  QTest::newRow("plan that failed before") << "plan" << false;
  QTest::newRow("plan that fails after the end") << "plan" << true;
  QTest::newRow("plan of the panel that failed before") << "panel" << false;
  QTest::newRow("plan of the panel that fails after the end") << "panel" << true;
  QTest::newRow("group that fails after the end") << "group" << true;
}

void AutomaticPlanTest::AFailedWishKeepsNothingAway() {
  QFETCH(QString, wish);
  QFETCH(bool, at_the_end);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  StoreDefaultView("Public B plan 2", 16000);
  window_->Player().OpenDefaultView();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  if (at_the_end) {
    At("09:00:00");
    QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  }
  ForgetTips();
  fixture_.Services().Hold("GetPlanDetail");
  if (wish == "plan") {
    window_->Player().Play(Code("Public A plan 2"));
  } else if (wish == "panel") {
    window_->Family(0).Panel()->PlayPlanByString(fixture_.Code("Public A plan 2"), false);
  } else {
    Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code("Public A"), 20);
  }
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  QTimer* next_plan = nullptr;
  if (at_the_end) {
    At("10:00:00");
    TickPlayer(kNextPlanMs);
    QVERIFY(!Wall().IsPlaying());
    next_plan = PlayerTimer(kNextPlanMs);
    QVERIFY(next_plan);
    next_plan->stop();  // or the default view may be asked for while the line is still down
  }
  fixture_.Services().Fail("GetPlanDetail", "The line is down");
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Tip(), QString("The line is down"));
  fixture_.Services().Mend("GetPlanDetail");
  if (!at_the_end) {
    At("09:00:00");
    QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
    At("10:00:00");
  } else {
    next_plan->start();
  }
  TickPlayer(kNextPlanMs);
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
}

void AutomaticPlanTest::AWishAskedForTwiceOutlivesOneFailure() {
  Begin();
  auto& services = fixture_.Services();
  services.Fail("GetPlanDetail", "The line is down");
  services.Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  window_->Player().Play(Code("Public B plan 2"));
  QVERIFY(services.WaitUntilHeld("GetPlanDetail"));
  services.Mend("GetPlanDetail");
  services.Hold("GetPlanDetail");  // the first one may go when it looks again
  window_->Player().Play(Code("Public B plan 2"));
  QVERIFY(services.WaitUntilHeld("GetPlanDetail", 2));
  services.Release("nothing");
  QTRY_COMPARE(Tip(), QString("The line is down"));
  services.ReleaseAll();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
}

void AutomaticPlanTest::AVanishedPlanStopsAtItsEnd() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "23:59:58");
  At("09:00:00");
  DeletePlanResquest request;  // by another client: this one's panel would stop it at once
  request.plan_index_code = Code("A1 plan 2");
  DeletePlanResponse response;
  QVERIFY(fixture_.Store().DeletePlan(request, response));
  CAutoPlanHelper::Instance().CheckAutoRunPlan();
  At("23:59:57");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  NextDay();  // the computer slept over the end
  At("00:00:01");
  At("00:00:02");  // the helper's announcement, which does not come here, has the first go
  QVERIFY(!Wall().IsPlaying());
  QVERIFY(!CAutoPlanHelper::Instance().GetPlanDisplayState());
}

// Both look at the clock once a second, in no particular order.
void AutomaticPlanTest::StopIsAnnouncedWhicheverClockTicksFirst() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  QSignalSpy stops(&CAutoPlanHelper::Instance(), &CAutoPlanHelper::signalStopPlanAutoRun);
  Set(Now().date(), QTime(10, 0));
  TickPlayer();
  QCOMPARE(stops.count(), 0);
  Tick(&CAutoPlanHelper::Instance(), 1000);
  QCOMPARE(stops.count(), 1);
  QVERIFY(!Wall().IsPlaying() && CAutoPlanHelper::Instance().GetAutoRunPlanIndex().empty());
  At("10:00:01");
  At("10:00:02");
  QCOMPARE(stops.count(), 1);
}

void AutomaticPlanTest::ChangedTimesTakeEffect_data() {
  QTest::addColumn<QString>("begin");
  QTest::addColumn<QString>("end");
  QTest::addColumn<QString>("runs_until");
  QTest::newRow("later end") << "09:00:00"
                             << "11:00:00"
                             << "10:59:59";
  QTest::newRow("earlier end") << "09:00:00"
                               << "09:20:00"
                               << "09:10:00";
  QTest::newRow("moved to later") << "14:00:00"
                                  << "15:00:00"
                                  << "09:10:00";
  QTest::newRow("switched off") << ""
                                << ""
                                << "09:59:59";
}

void AutomaticPlanTest::ChangedTimesTakeEffect() {
  QFETCH(QString, begin);
  QFETCH(QString, end);
  QFETCH(QString, runs_until);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  At("09:00:00");
  At("09:10:00");
  QVERIFY(Wall().IsPlaying());
  Schedule("A1 plan 2", begin, end);
  if (runs_until != "09:10:00") {
    At(runs_until);
    QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  }
  At(begin == "09:00:00" ? end : begin.isEmpty() ? "10:00:00" : "09:30:00");
  if (begin.isEmpty()) {
    At("10:00:01");  // no announcement comes for it
  }
  QVERIFY(!Wall().IsPlaying());
  if (begin == "14:00:00") {
    CAutoPlanHelper::Instance().CheckAutoRunPlan();
    At("14:00:00");
    QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  }
}

void AutomaticPlanTest::FollowsAnotherTimedPlan() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  Schedule("A1 plan 10", "10:00:00", "11:00:00");
  At("09:00:00");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 2"));
  At("10:00:00");
  QVERIFY(!Wall().IsPlaying());
  CAutoPlanHelper::Instance().CheckAutoRunPlan();  // as it does by itself within five minutes
  At("10:00:01");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 10"));
  // The one that is due goes, the other comes next tomorrow: nothing is left to run today.
  Delete("A1 plan 10");
  At("10:00:02");
  QVERIFY(!Wall().IsPlaying());
}

void AutomaticPlanTest::FollowsAnotherTimedPlanAfterAStop() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  Schedule("A1 plan 10", "10:00:00", "11:00:00");
  At("09:00:00");
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  At("10:00:00");
  At("10:00:01");  // nobody announces the end of a plan that is not on show
  QVERIFY(!Wall().IsPlaying());
  At("10:00:02");
  QCOMPARE(Wall().PlanName(), QString("A1 plan 10"));
}

QTEST_MAIN(AutomaticPlanTest)
#include "test_automatic_plan.moc"
