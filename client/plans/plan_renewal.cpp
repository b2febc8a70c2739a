#include "plans/plan_renewal.h"

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "plans/plan_family.h"
#include "plans/retry_pause.h"
#include "wall/live_wall.h"

namespace TarnClient {

using TarnPlanView::CStandardViewController;
using namespace view_plugin_protocol;

CPlanRenewal::CPlanRenewal(CLiveWall* wall, QObject* parent) : QObject(parent), wall_(wall) {
  again_.setSingleShot(true);
  connect(&again_, &QTimer::timeout, this, &CPlanRenewal::Fetch);
}

void CPlanRenewal::Attach(CPlanFamily* family) {
  if (family->Controller()) {
    connect(family->Controller(), &CStandardViewController::SignalUpdatePlanSucc, this,
            [this](const UpdatePlanRequest& request) { OnSaved(request.plan_index_code); });
  }
}

void CPlanRenewal::OnSaved(const std::string& plan_code) {
  if (wall_->IsPlaying() && plan_code == wall_->Plan().index_code) {
    plan_code_ = plan_code;
    failures_ = 0;
    Fetch();
  }
}

// What was sent is not enough: what it leaves out stays as the service has it. Until the plan can be read it plays on
// as it was.
void CPlanRenewal::Fetch() {
  again_.stop();
  if (!wall_->IsPlaying() || plan_code_ != wall_->Plan().index_code) {
    return;
  }
  GetPlanDetailRequest request;
  request.plan_index_code = plan_code_;
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Replacing(newest_)
      .Then(this, [this](const auto& fetched) {
        if (fetched.ok) {
          Take(fetched.response);
        } else if (fetched.response.error_kind != Gone) {
          again_.start(RetryPauseSeconds(++failures_) * 1000);
        }
      });
}

// A newer version may have been played in the meantime.
void CPlanRenewal::Take(const GetPlanDetailResponse& plan) {
  if (plan.revision >= wall_->Plan().revision) {
    wall_->Renew(plan);
  }
}

}  // namespace TarnClient
