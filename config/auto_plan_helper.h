#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "Wren/Base/singleton.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Starts a plan at the beginning of its daily time span and stops it at the end.
///
/// The host says which plan that is: it is asked every 300000 ms and after each change of a plan; the clock is looked
/// at every 1000 ms. Works only while the configuration supports timed play. A plan starts at most once a day unless
/// it or its times change, and never when its span crosses midnight. Thread: GUI.
class TARNPLANVIEW_EXPORT CAutoPlanHelper : public QObject, public Wren::Base::CSingleton<CAutoPlanHelper> {
  Q_OBJECT
 public:
  ~CAutoPlanHelper() override;

  /// Starts both timers again and asks the host at once.
  void StartDetectAutoRunPlan();
  /// Stops both timers. A plan that was started plays on, and is not stopped at its end.
  void StopDetect();
  /// Asks the host at once; blocks until it has answered. What it says is looked at by the next check of the clock.
  void CheckAutoRunPlan();
  /// Code of the plan that was started; empty after a stop.
  std::string GetAutoRunPlanIndex();
  /// Whether the plan that was started is on show: set by the start and the end of a span, and by a host whose user
  /// stops the plan. Without it no stop comes at the end of the span.
  void SetPlanDisplayState(bool state);
  /// As set last; false at first.
  bool GetPlanDisplayState();

  bool event(QEvent* event) override;

 Q_SIGNALS:
  /// The span has begun. The record is a copy, which slots may keep or change. A slot may open a modal loop: no second
  /// start comes out of it.
  void signalStartPlanAutoRun(const view_plugin_protocol::GetPlanDetailResponse& plan_info);
  /// The span has ended. Does not come when the host says in mid-run that no plan starts by itself: the player goes by
  /// the end that the start carried.
  void signalStopPlanAutoRun();

 public Q_SLOTS:
  /// As CheckAutoRunPlan(); connected to the client's SignalPlanStateChanged().
  void OnQueryAutoRunPlanOnce();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  friend class Wren::Base::CSingleton<CAutoPlanHelper>;
  CAutoPlanHelper();

  void queryAutoRunPlan();
  void checkAutoRunPlan();
  bool isDue(const QTime& now) const;
  void startPlan(const QDate& today);
  void stopPlan();
  void stopTimer(int& id);

  struct Data;
  std::shared_ptr<Data> data_;
};

}  // namespace TarnPlanView
