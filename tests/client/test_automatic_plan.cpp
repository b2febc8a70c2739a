#include <QSignalSpy>
#include <QtTest>
#include <atomic>

#include "auto_plan_helper.h"
#include "client_desk.h"
#include "plan_clock.h"
#include "standard_view_controller.h"

using TarnPlanView::CAutoPlanHelper;
using TarnTest::CPlanFixture;
using view_plugin_protocol::AddPlanLogRequestParam;

/// Timed plans from the store to the wall, by a clock that the test sets and timers that run. What gives way to what:
/// test_programme.cpp.
class AutomaticPlanTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void StartsAndStopsOnTime();
  void FollowsAnotherTimedPlan();
  void FollowsChangedTimes();
  void AVanishedPlanStopsAtItsEnd();
  void TheDefaultViewComesBack_data();
  void TheDefaultViewComesBack();
  void OwnPlansAreTheirUsersOnly();

 private:
  /// The helper looks at the clock from now on.
  void Begin();
  void Set(const char* time, int days = 0) {
    time_ = QDateTime(QDate(2026, 3, 2).addDays(days), QTime::fromString(time)).toMSecsSinceEpoch();
  }
  /// By this client, with the end of its run.
  void Schedule(const QString& plan, const char* begin, const char* end);
  void SwitchUser(const char* user);

  std::atomic<qint64> time_{0};
};

void AutomaticPlanTest::init() {
  Set("08:00:00");
  now_ = [this] { return QDateTime::fromMSecsSinceEpoch(time_); };
  TarnPlanView::CPlanClock::SetSource(now_);
}

void AutomaticPlanTest::Begin() {
  Open({{"load_all", 1}, {"timed_play", 1}});
  CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
}

void AutomaticPlanTest::Schedule(const QString& plan, const char* begin, const char* end) {
  auto request = TarnTest::Unchanged(Stored(plan));
  request.auto_play = true;
  request.begin_time = begin;
  request.end_time = end;
  auto* controller = window_->Family(0).Controller();
  QSignalSpy changed(controller, &TarnPlanView::CStandardViewController::SignalUpdatePlanSucc);
  controller->UpdatePlanParam(request, plan);
  QTRY_COMPARE(changed.count(), 1);
}

void AutomaticPlanTest::SwitchUser(const char* user) {
  CClientDesk::SwitchUser(user);
  WaitForPlans();
}

void AutomaticPlanTest::StartsAndStopsOnTime() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  QSignalSpy stops(&CAutoPlanHelper::Instance(), &CAutoPlanHelper::signalStopPlanAutoRun);
  Set("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QTRY_COMPARE(MarkedRows(), QString("A1 plan 2"));
  CPlanFixture::Drain();
  const auto logged = fixture_.Services().Requests<AddPlanLogRequestParam>();
  QVERIFY(logged.size() == 1 && logged[0].automatic);
  Set("10:00:00");
  QTRY_VERIFY(!Wall().IsPlaying());
  QCOMPARE(stops.count(), 1);  // not only by the client's own look at the clock: the helper forgets its plan by it
  QVERIFY(!CAutoPlanHelper::Instance().GetPlanDisplayState());
  Set("09:00:00", 1);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
}

void AutomaticPlanTest::FollowsAnotherTimedPlan() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  Schedule("A1 plan 10", "10:00:00", "11:00:00");
  Set("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);  // so that no one announces its end
  QVERIFY(!CAutoPlanHelper::Instance().GetPlanDisplayState());
  Set("10:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 10"));
}

void AutomaticPlanTest::FollowsChangedTimes() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  Set("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  Schedule("A1 plan 2", "09:00:00", "09:30:00");
  Set("09:30:00");
  QTRY_VERIFY(!Wall().IsPlaying());
}

void AutomaticPlanTest::AVanishedPlanStopsAtItsEnd() {
  Begin();
  Schedule("A1 plan 2", "09:00:00", "23:59:58");
  Set("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QCOMPARE(fixture_.InStore().DeletePlan(Code("A1 plan 2")), QString());  // elsewhere: here it would stop at once
  CAutoPlanHelper::Instance().CheckAutoRunPlan();
  QVERIFY(Wall().IsPlaying());
  Set("00:00:01", 1);  // the computer slept over the end
  QTRY_VERIFY(!Wall().IsPlaying());
  QVERIFY(!CAutoPlanHelper::Instance().GetPlanDisplayState());
}

void AutomaticPlanTest::TheDefaultViewComesBack_data() {
  QTest::addColumn<QString>("target");
  QTest::addColumn<int>("type");
  QTest::newRow("plan") << "Public B plan 2" << 16000;
  QTest::newRow("group") << "Public B" << 16001;
}

void AutomaticPlanTest::TheDefaultViewComesBack() {
  QFETCH(QString, target);
  QFETCH(int, type);
  Begin();
  Schedule("A1 plan 2", "09:00:00", "10:00:00");
  QCOMPARE(fixture_.InStore().SetDefaultView(Code(target), type), QString());
  window_->Player().OpenDefaultView();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  Set("09:00:00");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QCOMPARE(clock_->Seconds(), 0);
  Set("10:00:00");
  QTRY_VERIFY(!Wall().IsPlaying());
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QTRY_COMPARE(clock_->Seconds() > 0, type == 16001);
}

void AutomaticPlanTest::OwnPlansAreTheirUsersOnly() {
  Begin();
  Schedule("Own C plan 2", "09:00:00", "10:00:00");
  fixture_.Services().Fail("GetPlanDetail", "The line is down");  // so that the helper keeps it
  SwitchUser("viewer");
  Set("09:00:00");
  QTRY_VERIFY(window_->Player().State().doubtful);
  fixture_.Services().Mend("GetPlanDetail");
  using Question = TarnClient::CProgramme::Doubtful::Question;
  QTRY_VERIFY(window_->Player().State().doubtful->question == Question::NotSeen);
  QVERIFY(!Wall().IsPlaying());
  SwitchUser("operator");
  QTRY_COMPARE(Wall().PlanName(), QString("Own C plan 2"));  // the same day, though it was announced once only
  Set("10:00:00");
  QTRY_VERIFY(!Wall().IsPlaying());
}

QTEST_MAIN(AutomaticPlanTest)
#include "test_automatic_plan.moc"
