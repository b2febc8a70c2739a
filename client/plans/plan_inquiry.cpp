#include "plans/plan_inquiry.h"

#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plans/off_thread.h"

namespace TarnClient {

CPlanInquiry::CPlanInquiry(QObject* parent, std::function<void(const Plan& plan)> seen)
    : QObject(parent), seen_(std::move(seen)) {
  again_.setInterval(1000);
  connect(&again_, &QTimer::timeout, this, &CPlanInquiry::Ask);
}

void CPlanInquiry::Begin(const Plan& plan) {
  Drop();
  plan_ = plan;
  end_ = QDateTime(TarnPlanView::CPlanClock::Now().date(),
                   QTime::fromString(MarUIControl::StringToQString(plan.end_time)));
  again_.start();
  Ask();
}

void CPlanInquiry::Drop() {
  ++generation_;
  again_.stop();
  plan_.reset();
  is_asking_ = false;
}

std::optional<CPlanInquiry::Plan> CPlanInquiry::Take() {
  auto plan = std::move(plan_);
  Drop();
  return plan;
}

void CPlanInquiry::Ask() {
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

void CPlanInquiry::OnAnswer(const std::optional<Plan>& found) {
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

std::optional<CPlanInquiry::Plan> CPlanInquiry::Fetch(const std::string& code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = code;
  Plan response;
  if (!LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    return std::nullopt;
  }
  return response;
}

bool CPlanInquiry::IsTimedAlike(const Plan& one, const Plan& other) {
  return one.auto_run == other.auto_run && one.start_time == other.start_time && one.end_time == other.end_time;
}

}  // namespace TarnClient
