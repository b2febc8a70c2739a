#include "plans/plan_renewal.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "plans/plan_family.h"
#include "wall/live_wall.h"

namespace TarnClient {

using TarnPlanView::CStandardViewController;
using namespace view_plugin_protocol;

CPlanRenewal::CPlanRenewal(CLiveWall* wall, QObject* parent) : QObject(parent), wall_(wall) {}

void CPlanRenewal::Attach(CPlanFamily* family) {
  if (family->Controller()) {
    connect(family->Controller(), &CStandardViewController::SignalUpdatePlanSucc, this,
            [this](const UpdatePlanRequest& request) { OnSaved(request.plan_index_code); });
  }
}

// The request is not enough: what it leaves out stays as the service has it. A plan that cannot be read plays on as it
// was; whoever saves it from the wall is told.
void CPlanRenewal::OnSaved(const std::string& plan_code) {
  if (!wall_->IsPlaying() || plan_code != wall_->Plan().index_code) {
    return;
  }
  GetPlanDetailRequest request;
  request.plan_index_code = plan_code;
  // The answer to an older question brings an older version.
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Replacing(newest_)
      .Then(this, [this](const auto& fetched) {
        if (fetched.ok) {
          wall_->Renew(fetched.response);
        }
      });
}

}  // namespace TarnClient
