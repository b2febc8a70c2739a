#include "plans/plan_renewal.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "plans/off_thread.h"
#include "plans/plan_family.h"
#include "wall/live_wall.h"

namespace TarnClient {

using TarnPlanView::CStandardViewController;
using namespace view_plugin_protocol;

namespace {

struct Fetched {
  bool ok = false;
  GetPlanDetailResponse plan;
};

}  // namespace

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
  const auto fetch = [plan_code] {
    Fetched fetched;
    GetPlanDetailRequest request;
    request.plan_index_code = plan_code;
    fetched.ok = LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, fetched.plan);
    return fetched;
  };
  RunOffThread(this, fetch, [this, asked = ++asked_](const Fetched& fetched) {
    if (fetched.ok && asked == asked_) {
      wall_->Renew(fetched.plan);
    }
  });
}

}  // namespace TarnClient
