#include "commands/plan_copier.h"

#include <TarnPlanView/standard_view_controller.h>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "commands/free_name.h"
#include "host_calls/ask.h"
#include "plan_rules/update_request.h"

namespace TarnClient {

using HostCalls::CallNow;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

struct CopyRequest : ResponseHeader {
  AddPlanRequest plan;
};
using ReadCopy = HostCalls::Result<CopyRequest>;

ReadCopy Failure(const ResponseHeader& refusal) {
  ReadCopy failed;
  static_cast<ResponseHeader&>(failed.response) = refusal;
  return failed;
}

ReadCopy Read(const GetPlanDetailRequest& original) {
  const auto plan = CallNow(&CViewBusinessInterfaceMgr::GetPlanDetail, original);
  if (!plan.ok) {
    return Failure(plan.response);
  }
  GetPlansInGroupRequest beside;
  beside.group_index_code = plan.response.group_index_code;
  beside.node_type = plan.response.type;
  const auto others = CallNow(&CViewBusinessInterfaceMgr::GetPlansInGroup, beside);
  if (!others.ok) {
    return Failure(others.response);
  }
  QSet<QString> taken;
  for (const PlanBasicInfo& other : others.response.plans) {
    taken.insert(StringToQString(other.name));
  }
  ReadCopy copy;
  copy.ok = true;
  copy.response.plan = UpdateRequestFrom(plan.response);
  copy.response.plan.plan_name = QStringToString(NameOfCopy(StringToQString(plan.response.name), taken));
  copy.response.plan.auto_play = false;
  return copy;
}

}  // namespace

CPlanCopier::CPlanCopier(TarnPlanView::CStandardViewController* controller, QObject* parent)
    : QObject(parent), controller_(controller) {}

void CPlanCopier::Drop() {
  calls_.Drop();
}

void CPlanCopier::Copy(const std::string& plan_code) {
  if (!controller_) {
    return;
  }
  if (calls_.IsUnderWay()) {  // a second one would choose the same name
    Q_EMIT SignalFailed(tr("A copy is still being made. Try again in a moment."));
    return;
  }
  GetPlanDetailRequest original;
  original.plan_index_code = plan_code;
  HostCalls::Ask([original] { return Read(original); })
      .AsCurrentUser()
      .Within(calls_)
      .Then(this, [this](const ReadCopy& copy) {
        if (copy.ok) {
          Add(copy.response.plan);
        } else {
          Q_EMIT SignalFailed(StringToQString(copy.response.error_info));
        }
      });
}

void CPlanCopier::Add(const AddPlanRequest& copy) {
  if (!controller_) {
    return;
  }
  const auto on_answer = [self = QPointer<CPlanCopier>(this),
                          asked = calls_.Enter()](const TarnPlanView::CallAnswer& answer) {
    const bool is_wanted = HostCalls::CCallScope::Leave(asked);
    if (self && is_wanted && answer.ok) {
      Q_EMIT self->SignalCopied(answer.text);
    }
  };
  controller_->AddPlanParam(copy, on_answer);
}

}  // namespace TarnClient
