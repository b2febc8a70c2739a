#include "change_call.h"

#include "MarUIControl/string_conversion.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using HostCalls::CCallOrder;

CCallOrder& ChangeOrder() {
  static CCallOrder order;
  return order;
}

CCallOrder& PlayLogOrder() {
  static CCallOrder order;
  return order;
}

void RecheckIfNoticed(int notices, const std::string& code, bool is_group) {
  auto& manager = CViewModelDataManager::Instance();
  if (manager.GetNoticeCount() != notices) {
    manager.Recheck(MarUIControl::StringToQString(code), is_group);
  }
}

}  // namespace TarnPlanView
