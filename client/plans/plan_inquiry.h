#pragma once

#include <TarnPlanView/plan_clock.h>

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plans/off_thread.h"

namespace TarnClient {

/// Finds out whether a timed plan is one that the present user can see. Asks once a second until it is so or the plan's
/// time is over, since a failed answer proves nothing: the service may be away. Thread: GUI.
class CPlanInquiry : public QObject {
 public:
  using Plan = view_plugin_protocol::GetPlanDetailResponse;

  /// `seen` gets the plan as it is now. Not when its times have changed meanwhile: it is then announced anew.
  CPlanInquiry(QObject* parent, std::function<void(const Plan& plan)> seen);

  /// Takes the place of an earlier plan; nothing is heard of that one any more.
  void Begin(const Plan& plan);
  void Drop();
  /// Drops the plan that is being asked for and returns it.
  std::optional<Plan> Take();

 private:
  static std::optional<Plan> Fetch(const std::string& code);
  static bool IsTimedAlike(const Plan& one, const Plan& other);
  void Ask();
  void OnAnswer(const std::optional<Plan>& found);
  bool IsOver() const { return TarnPlanView::CPlanClock::Now() >= end_; }

  const std::function<void(const Plan& plan)> seen_;
  std::optional<Plan> plan_;
  QDateTime end_;
  QTimer again_{this};
  bool is_asking_ = false;
  int generation_ = 0;
};

inline CPlanInquiry::CPlanInquiry(QObject* parent, std::function<void(const Plan& plan)> seen)
    : QObject(parent), seen_(std::move(seen)) {
  again_.setInterval(1000);
  connect(&again_, &QTimer::timeout, this, &CPlanInquiry::Ask);
}

inline void CPlanInquiry::Begin(const Plan& plan) {
  Drop();
  plan_ = plan;
  end_ = QDateTime(TarnPlanView::CPlanClock::Now().date(),
                   QTime::fromString(MarUIControl::StringToQString(plan.end_time)));
  again_.start();
  Ask();
}

inline void CPlanInquiry::Drop() {
  ++generation_;
  again_.stop();
  plan_.reset();
  is_asking_ = false;
}

inline std::optional<CPlanInquiry::Plan> CPlanInquiry::Take() {
  auto plan = std::move(plan_);
  Drop();
  return plan;
}

inline void CPlanInquiry::Ask() {
  if (IsOver()) {
    Drop();
  } else if (!std::exchange(is_asking_, true)) {
    RunOffThread(
        this, [code = plan_->index_code] { return Fetch(code); },
        [this, generation = generation_](const std::optional<Plan>& found) {
          if (generation == generation_) {
            OnAnswer(found);
          }
        });
  }
}

inline void CPlanInquiry::OnAnswer(const std::optional<Plan>& found) {
  is_asking_ = false;
  if (IsOver()) {
    Drop();
  } else if (found) {
    const std::optional<Plan> asked = Take();
    if (IsTimedAlike(*asked, *found)) {
      seen_(*found);
    }
  }
}

inline std::optional<CPlanInquiry::Plan> CPlanInquiry::Fetch(const std::string& code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = code;
  Plan response;
  if (!LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    return std::nullopt;
  }
  return response;
}

inline bool CPlanInquiry::IsTimedAlike(const Plan& one, const Plan& other) {
  return one.auto_run == other.auto_run && one.start_time == other.start_time && one.end_time == other.end_time;
}

}  // namespace TarnClient
