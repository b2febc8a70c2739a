#pragma once

#include <TarnPlanView/plan_clock.h>

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"
#include "host_calls/result.h"

namespace TarnClient {

/// Finds out whether a timed plan is one that the present user can see. Asks once a second until it is so or the plan's
/// time is over, since a failed answer proves nothing: the service may be away. Thread: GUI.
class CPlanInquiry : public QObject {
 public:
  using Plan = view_plugin_protocol::GetPlanDetailResponse;

  /// `seen` gets the plan as it is now. Not when its times have changed meanwhile: it is then announced again.
  CPlanInquiry(QObject* parent, std::function<void(const Plan& plan)> seen);

  /// Takes the place of an earlier plan; nothing is heard of that one any more.
  void Begin(const Plan& plan);
  void Drop();
  /// Drops the plan that is being asked for and returns it.
  std::optional<Plan> Take();

 private:
  static bool IsTimedAlike(const Plan& one, const Plan& other);
  void Ask();
  void OnAnswer(const HostCalls::Result<Plan>& found);
  bool IsOver() const { return TarnPlanView::CPlanClock::Now() >= end_; }

  const std::function<void(const Plan& plan)> seen_;
  std::optional<Plan> plan_;
  QDateTime end_;
  QTimer again_{this};
  HostCalls::CCallScope calls_;
};

}  // namespace TarnClient
