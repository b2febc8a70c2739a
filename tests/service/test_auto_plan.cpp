#include <QAbstractEventDispatcher>
#include <QSignalSpy>
#include <QTimerEvent>
#include <QtTest>

#include "TarnUIDataController/signal_transfer_manager.h"
#include "auto_plan_helper.h"
#include "plan_clock.h"
#include "plan_test.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanTest;

namespace {

// Answers the automatic query as the test says; everything else comes from the store.
class CScriptedAutoPlan : public TarnTest::CRecordingServices {
 public:
  using CRecordingServices::CRecordingServices;
  bool GetPlanDetail(const GetPlanDetailRequest& request, GetPlanDetailResponse& response) override {
    requests.push_back(request);
    if (error.empty()) {
      response = plan;
      return true;
    }
    response.error_info = error;
    return false;
  }
  void SetPlan(const char* code, const char* start, const char* end) {
    error.clear();
    plan = {};
    plan.index_code = code;
    plan.start_time = start;
    plan.end_time = end;
  }

  std::vector<GetPlanDetailRequest> requests;
  GetPlanDetailResponse plan;
  std::string error = "NoAutoRunPlan";
};

// Shows which timers an object runs, and with what interval.
QMap<int, int> TimersOf(QObject* object) {
  QMap<int, int> timers;
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object)) {
    timers[timer.interval] = timer.timerId;
  }
  return timers;
}

}  // namespace

// The automatic plan against a clock that the test sets; ticks are sent, not waited for.
class AutoPlanTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup();
  void StartsAndStopsOnTime();
  void TimersAndQueries();
  void OncePerDayUnlessChanged();
  void NeverDue_data();
  void NeverDue();
  void LostPlanInMidRun();
  void OtherFailuresKeepThePlan();
  void ModalLoopInASlot();
  void SlotsMayAskAgain();
  void TimedPlayOffMakesNoCall();

 private:
  void Begin(bool timed_play = true);
  /// With a plan "17" that is detected.
  void BeginWith(const char* start, const char* end) {
    Begin();
    host_->SetPlan("17", start, end);
    Helper().StartDetectAutoRunPlan();
  }
  CAutoPlanHelper& Helper() { return CAutoPlanHelper::Instance(); }
  void Tick(const QString& time) {
    now_.setTime(QTime::fromString(time));
    Tick();
  }
  void Tick() {
    QTimerEvent event(TimersOf(&Helper()).value(1000));
    QCoreApplication::sendEvent(&Helper(), &event);
  }

  std::shared_ptr<CScriptedAutoPlan> host_;
  QDateTime now_{QDate(2026, 3, 2), QTime(8, 0)};
  std::unique_ptr<QSignalSpy> started_, stopped_;
};

void AutoPlanTest::Begin(bool timed_play) {
  Open({{"timed_play", timed_play}}, false);
  host_ = std::make_shared<CScriptedAutoPlan>(TarnHost::InstalledHostServices());
  TarnHost::InstallHostServices(host_);
  CPlanClock::SetSource([this] { return now_; });
  started_ = std::make_unique<QSignalSpy>(&Helper(), &CAutoPlanHelper::signalStartPlanAutoRun);
  stopped_ = std::make_unique<QSignalSpy>(&Helper(), &CAutoPlanHelper::signalStopPlanAutoRun);
}

void AutoPlanTest::cleanup() {
  started_.reset();
  stopped_.reset();
  CPlanClock::SetSource({});
  now_ = {QDate(2026, 3, 2), QTime(8, 0)};
  Shut();
  host_.reset();
}

void AutoPlanTest::StartsAndStopsOnTime() {
  BeginWith("09:00:00", "10:00:00");
  Tick("08:59:59");
  QCOMPARE(started_->count(), 0);
  Tick("09:00:00");
  QCOMPARE(started_->count(), 1);
  QCOMPARE(started_->front().front().value<GetPlanDetailResponse>().end_time, std::string("10:00:00"));
  QCOMPARE(Helper().GetAutoRunPlanIndex(), std::string("17"));
  QVERIFY(Helper().GetPlanDisplayState());
  Tick("09:59:59");
  QCOMPARE(stopped_->count(), 0);
  Tick("10:00:00");
  QCOMPARE(stopped_->count(), 1);
  QCOMPARE(started_->count(), 1);
  QVERIFY(Helper().GetAutoRunPlanIndex().empty() && !Helper().GetPlanDisplayState());
  Tick("10:00:01");
  QCOMPARE(stopped_->count(), 1);
}

void AutoPlanTest::TimersAndQueries() {
  Begin();
  Helper().StartDetectAutoRunPlan();
  const auto timers = TimersOf(&Helper());
  QCOMPARE(timers.keys(), QList<int>({1000, 300000}));
  QCOMPARE(host_->requests.size(), size_t(1));  // at once
  QCOMPARE(host_->requests[0].plan_index_code, std::string("123"));
  QCOMPARE(host_->requests[0].query_kind, 1);
  QVERIFY(!host_->requests[0].play);
  QTimerEvent query(timers[300000]);
  QCoreApplication::sendEvent(&Helper(), &query);
  QCOMPARE(host_->requests.size(), size_t(2));
  Q_EMIT tarn_ui_data_controller::CSignalTransferManager::Instance().SignalPlanStateChanged();
  QCOMPARE(host_->requests.size(), size_t(3));
  Helper().StartDetectAutoRunPlan();
  QCOMPARE(TimersOf(&Helper()).size(), 2);  // the old ones are gone
  Helper().StopDetect();
  Helper().StopDetect();
  QVERIFY(TimersOf(&Helper()).isEmpty());
  // The check comes by its real timer, too.
  host_->SetPlan("17", "07:00:00", "10:00:00");
  Helper().StartDetectAutoRunPlan();
  QTRY_COMPARE(started_->count(), 1);
}

void AutoPlanTest::OncePerDayUnlessChanged() {
  BeginWith("09:00:00", "10:00:00");
  Tick("09:00:00");
  Helper().SetPlanDisplayState(false);  // the user turned it off
  Helper().CheckAutoRunPlan();
  Tick("09:30:00");
  QCOMPARE(started_->count(), 1);
  int expected = 1;
  const struct {
    const char *code, *start, *end;
  } changes[] = {{"18", "09:00:00", "10:00:00"}, {"18", "09:01:00", "10:00:00"}, {"18", "09:01:00", "10:01:00"}};
  for (const auto& change : changes) {
    host_->SetPlan(change.code, change.start, change.end);
    Helper().OnQueryAutoRunPlanOnce();
    Tick();
    QCOMPARE(started_->count(), ++expected);
    Tick();
    QCOMPARE(started_->count(), expected);
  }
  host_->plan.name = "another name";  // not a change that counts
  Helper().CheckAutoRunPlan();
  Tick();
  QCOMPARE(started_->count(), expected);
  now_ = now_.addDays(1);
  Tick();
  QCOMPARE(started_->count(), expected + 1);
}

void AutoPlanTest::NeverDue_data() {
  QTest::addColumn<QByteArray>("start");
  QTest::addColumn<QByteArray>("end");
  const auto add = [](const char* row, QByteArray start, QByteArray end) { QTest::newRow(row) << start << end; };
  add("over midnight", "22:00:00", "02:00:00");
  add("empty span", "09:00:00", "09:00:00");
  add("no start", "", "23:59:59");
  add("no end", "00:00:00", "later");
  add("neither", "24:00:00", "25:00:00");
}

void AutoPlanTest::NeverDue() {
  QFETCH(QByteArray, start);
  QFETCH(QByteArray, end);
  BeginWith(start.constData(), end.constData());
  for (const char* time : {"00:00:00", "01:00:00", "09:00:00", "22:30:00", "23:59:59"}) {
    Tick(time);
  }
  QVERIFY(started_->isEmpty() && stopped_->isEmpty());
}

void AutoPlanTest::LostPlanInMidRun() {
  BeginWith("09:00:00", "10:00:00");
  Tick("09:00:00");
  host_->error = "NoAutoRunPlan";
  Helper().CheckAutoRunPlan();
  Tick("10:30:00");
  // No stop is announced: what shows the plan knows its end from the start.
  QCOMPARE(stopped_->count(), 0);
  QVERIFY(Helper().GetPlanDisplayState());
  QCOMPARE(Helper().GetAutoRunPlanIndex(), std::string("17"));
}

void AutoPlanTest::OtherFailuresKeepThePlan() {
  BeginWith("09:00:00", "10:00:00");
  for (const char* error : {"line is down", "NoAutoRunPlan ", " "}) {
    host_->error = error;
    Helper().CheckAutoRunPlan();
  }
  Tick("09:00:00");
  QCOMPARE(started_->count(), 1);
}

void AutoPlanTest::ModalLoopInASlot() {
  BeginWith("09:00:00", "10:00:00");
  int depth = 0, deepest = 0;
  connect(&Helper(), &CAutoPlanHelper::signalStartPlanAutoRun, this, [&] {
    deepest = qMax(deepest, ++depth);
    QEventLoop loop;  // as a message box does
    QMetaObject::invokeMethod(
        this,
        [&] {
          Tick();  // must neither start again nor wait for itself
          Helper().CheckAutoRunPlan();
          loop.quit();
        },
        Qt::QueuedConnection);
    loop.exec();
    --depth;
  });
  Tick("09:00:00");
  QCOMPARE(deepest, 1);
  QCOMPARE(started_->count(), 1);
  Tick("10:00:00");  // later ticks look again
  QCOMPARE(stopped_->count(), 1);
}

void AutoPlanTest::SlotsMayAskAgain() {
  BeginWith("09:00:00", "10:00:00");
  std::string seen;
  connect(&Helper(), &CAutoPlanHelper::signalStartPlanAutoRun, this, [&](const GetPlanDetailResponse& plan) {
    host_->SetPlan("99", "11:00:00", "12:00:00");
    Helper().CheckAutoRunPlan();  // replaces the stored record while it is being announced
    seen = plan.index_code;
  });
  Tick("09:00:00");
  QCOMPARE(seen, std::string("17"));
  QCOMPARE(Helper().GetAutoRunPlanIndex(), std::string("17"));
}

void AutoPlanTest::TimedPlayOffMakesNoCall() {
  Begin(false);
  host_->SetPlan("17", "00:00:00", "23:59:59");
  Helper().StartDetectAutoRunPlan();
  Helper().CheckAutoRunPlan();
  Tick();
  QVERIFY(host_->requests.empty());
  QCOMPARE(started_->count(), 0);
}

QTEST_MAIN(AutoPlanTest)
#include "test_auto_plan.moc"
