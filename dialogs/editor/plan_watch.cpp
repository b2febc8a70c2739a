#include "plan_watch.h"

#include <cstdlib>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "plan_rules/families.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using view_plugin_protocol::GetPlanDetailRequest;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

constexpr int kSoon = 200;    // ms, for the notices that come together
constexpr int kAgain = 5000;  // ms, when the host did not answer

}  // namespace

CPlanWatch::CPlanWatch(QObject* parent) : QObject(parent) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &CPlanWatch::Look);
  const auto& manager = CViewModelDataManager::Instance();
  connect(&manager, &CViewModelDataManager::SignalNoticed, this, &CPlanWatch::LookSoon);
  connect(&manager, &CViewModelDataManager::SignalPlanStateChanged, this, &CPlanWatch::LookSoon);
}

void CPlanWatch::Watch(const std::string& plan_code, const std::string& group_code) {
  Stop();
  plan_code_ = plan_code;
  Observe(group_code);
}

void CPlanWatch::Stop() {
  timer_.stop();
  calls_.Drop();
  looks_again_ = false;
  plan_code_.clear();
}

// A plan that was found by a search stands in no tree, and then no notice of it or its group would come.
void CPlanWatch::Observe(const std::string& group_code) const {
  auto& manager = CViewModelDataManager::Instance();
  manager.CreateViewObserverUpdate(plan_code_, ResourceData::RT_VIEW);
  if (!view_plugin_protocol::IsRootCode(std::atoi(group_code.c_str()))) {  // of the roots there is always one
    manager.CreateGroupObserver(group_code, ResourceData::RT_VIEW_GROUP);
  }
}

void CPlanWatch::LookSoon() {
  LookIn(kSoon);
}

void CPlanWatch::LookIn(int milliseconds) {
  const bool is_sooner = !timer_.isActive() || timer_.remainingTime() > milliseconds;
  if (!plan_code_.empty() && is_sooner) {
    timer_.start(milliseconds);
  }
}

// A notice during a look may be of what that look has not seen any more.
void CPlanWatch::Look() {
  if (calls_.IsUnderWay()) {
    looks_again_ = true;
    return;
  }
  GetPlanDetailRequest request;
  request.plan_index_code = plan_code_;
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Within(calls_)
      .Then(this, [this](const auto& now) { OnLooked(now); });
}

void CPlanWatch::OnLooked(const HostCalls::Result<GetPlanDetailResponse>& now) {
  if (std::exchange(looks_again_, false)) {
    LookSoon();
  }
  if (now.ok) {
    Observe(now.response.group_index_code);  // it may have moved, or the tree was loaded again
  } else if (now.response.error_kind == view_plugin_protocol::Unavailable) {
    LookIn(kAgain);
  }
  Q_EMIT SignalLooked(now);
}

}  // namespace TarnPlanView
