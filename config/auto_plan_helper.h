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
  void StopDetect();
  /// Asks the host at once; blocks until it has answered.
  void CheckAutoRunPlan();
  /// Code of the plan that was started; empty after a stop.
  std::string GetAutoRunPlanIndex();
  /// Whether the plan that was started is on show.
  void SetPlanDisplayState(bool state);
  bool GetPlanDisplayState();

  bool event(QEvent* event) override;

 Q_SIGNALS:
  /// The span has begun. The record is a copy, which slots may keep or change.
  void signalStartPlanAutoRun(const view_plugin_protocol::GetPlanDetailResponse& plan_info);
  /// The span has ended.
  void signalStopPlanAutoRun();

 public Q_SLOTS:
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
