#pragma once

#include <QAbstractEventDispatcher>
#include <QTimerEvent>
#include <QtTest>
#include <atomic>

#include "auto_plan_helper.h"
#include "client_desk.h"
#include "plan_clock.h"
#include "standard_view_controller.h"

namespace TarnTest {

using TarnPlanView::CAutoPlanHelper;
using namespace view_plugin_protocol;

/// The client's desk under a clock that the test sets; ticks are sent, not waited for.
class CAutomaticDesk : public CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void init();

 protected:
  void Begin();
  /// The clock shows this time, and both the look at the clock and the wall's own come round.
  void At(const QString& time);
  void Tick(QObject* object, int interval);
  void TickPlayer(int interval = 1000);
  /// The running timer of the player with this interval; null when there is none.
  QTimer* PlayerTimer(int interval);
  void StoreDefaultView(const QString& name, int type);
  void Schedule(const QString& plan, const QString& begin, const QString& end);
  void Delete(const QString& plan);
  std::vector<AddPlanLogRequestParam> Logged() { return fixture_.Services().Requests<AddPlanLogRequestParam>(); }

  QDateTime Now() const { return QDateTime::fromMSecsSinceEpoch(time_); }
  void Set(const QDate& day, const QTime& time) { time_ = QDateTime(day, time).toMSecsSinceEpoch(); }
  void NextDay() { Set(Now().date().addDays(1), Now().time()); }

  std::atomic<qint64> time_{0};
};

inline void CAutomaticDesk::init() {
  Set(QDate(2026, 3, 2), QTime(8, 0));
  now_ = [this] { return Now(); };
  TarnPlanView::CPlanClock::SetSource(now_);
}

inline void CAutomaticDesk::Begin() {
  Open({{"load_all", 1}, {"timed_play", 1}});
  CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
}

inline void CAutomaticDesk::Tick(QObject* object, int interval) {
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object)) {
    if (timer.interval == interval) {
      QTimerEvent event(timer.timerId);
      QCoreApplication::sendEvent(object, &event);
    }
  }
}

inline void CAutomaticDesk::At(const QString& time) {
  Set(Now().date(), QTime::fromString(time));
  Tick(&CAutoPlanHelper::Instance(), 1000);
  TickPlayer();
}

inline void CAutomaticDesk::TickPlayer(int interval) {
  for (QTimer* timer : window_->Player().findChildren<QTimer*>()) {
    Tick(timer, interval);
  }
}

inline QTimer* CAutomaticDesk::PlayerTimer(int interval) {
  for (QTimer* timer : window_->Player().findChildren<QTimer*>()) {
    if (timer->isActive() && timer->interval() == interval) {
      return timer;
    }
  }
  return nullptr;
}

inline void CAutomaticDesk::StoreDefaultView(const QString& name, int type) {
  ClienDefaultViewConfigRequest request;
  request.index_code = Code(name);
  request.type = type;
  ClienDefaultViewConfigReponse response;
  QVERIFY(fixture_.Store().SetClientViewConfig(request, response));
}

inline void CAutomaticDesk::Schedule(const QString& plan, const QString& begin, const QString& end) {
  const GetPlanDetailResponse stored = Stored(plan);
  UpdatePlanRequest request;
  request.plan_index_code = stored.index_code;
  request.plan_name = stored.name;
  request.index_type = stored.type;
  request.parent_index_code = stored.group_index_code;
  request.pages = stored.pages;
  request.auto_play = !begin.isEmpty();
  request.begin_time = begin.toStdString();
  request.end_time = end.toStdString();
  const int changes = fixture_.Services().Count("UpdatePlan");
  window_->Family(0).Controller()->UpdatePlanParam(request, plan);
  QTRY_COMPARE(fixture_.Services().Count("UpdatePlan"), changes + 1);
  CPlanFixture::Drain();
}

inline void CAutomaticDesk::Delete(const QString& plan) {
  window_->Family(0).Controller()->DeletePlanByIndex(Row(plan));
  QTRY_VERIFY(!Row(plan).isValid());
  CPlanFixture::Drain();
}

}  // namespace TarnTest
