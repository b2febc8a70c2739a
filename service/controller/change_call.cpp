#include "change_call.h"

#include <QCoreApplication>
#include <optional>

#include "MarUIControl/string_conversion.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;

namespace {

std::optional<int32_t> CurrentUser() {
  view_plugin_protocol::GetCurrentUserResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetCurrentUser({}, response)) {
    return std::nullopt;
  }
  return response.user.id;
}

}  // namespace

CCallOrder& ChangeOrder() {
  static CCallOrder order;
  return order;
}

CCallOrder& PlayLogOrder() {
  static CCallOrder order;
  return order;
}

// A call whose turn is now needs no question: it starts as any other request does.
std::function<std::string()> UserCheck(const CCallOrder& order, const std::string& key) {
  if (!order.IsBusy(key)) {
    return [] { return std::string(); };
  }
  const std::string refusal = MarUIControl::QStringToString(QCoreApplication::translate(
      "TarnPlanView::CStandardViewController", "Not done: the user was switched before this change had its turn."));
  return [user = CurrentUser(), refusal] { return CurrentUser() == user ? std::string() : refusal; };
}

void RecheckIfTold(int notices, const std::string& code, bool is_group) {
  auto& manager = CViewModelDataManager::Instance();
  if (manager.GetNoticeCount() != notices) {
    manager.Recheck(MarUIControl::StringToQString(code), is_group);
  }
}

}  // namespace TarnPlanView
