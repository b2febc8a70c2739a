#include "plans/plan_inquiry.h"

#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"

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
  calls_.Drop();
  again_.stop();
  plan_.reset();
}

std::optional<CPlanInquiry::Plan> CPlanInquiry::Take() {
  auto plan = std::move(plan_);
  Drop();
  return plan;
}

void CPlanInquiry::Ask() {
  if (IsOver()) {
    Drop();
  } else if (!calls_.IsUnderWay()) {
    view_plugin_protocol::GetPlanDetailRequest request;
    request.plan_index_code = plan_->index_code;
    HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
        .Within(calls_)
        .Then(this, [this](const HostCalls::Result<Plan>& found) { OnAnswer(found); });
  }
}

void CPlanInquiry::OnAnswer(const HostCalls::Result<Plan>& found) {
  if (IsOver()) {
    Drop();
  } else if (found.ok) {
    const std::optional<Plan> asked = Take();
    if (IsTimedAlike(*asked, found.response)) {
      seen_(found.response);
    }
  }
}

bool CPlanInquiry::IsTimedAlike(const Plan& one, const Plan& other) {
  return one.auto_run == other.auto_run && one.start_time == other.start_time && one.end_time == other.end_time;
}

}  // namespace TarnClient
