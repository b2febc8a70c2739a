#include "change_call.h"

#include <QCoreApplication>

#include "MarUIControl/string_conversion.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;

namespace {

using UserAnswer = Answer<view_plugin_protocol::GetCurrentUserResponse>;

UserAnswer CurrentUser() {
  return HostCall(&CViewBusinessInterfaceMgr::GetCurrentUser, {})();
}

Refusal RefusalFor(const UserAnswer& asked_by, const UserAnswer& now, const std::string& switched) {
  for (const UserAnswer* user : {&asked_by, &now}) {
    if (!user->ok) {
      return user->response;
    }
  }
  if (asked_by.response.user.id == now.response.user.id) {
    return std::nullopt;
  }
  view_plugin_protocol::ResponseHeader refusal;
  refusal.error_info = switched;
  return refusal;
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
std::function<Refusal()> UserCheck(const CCallOrder& order, const std::string& key) {
  if (!order.IsBusy(key)) {
    return [] { return Refusal(); };
  }
  const std::string switched = MarUIControl::QStringToString(QCoreApplication::translate(
      "TarnPlanView::CStandardViewController", "Not done: the user was switched before this change had its turn."));
  return [asked_by = CurrentUser(), switched] { return RefusalFor(asked_by, CurrentUser(), switched); };
}

void RecheckIfTold(int notices, const std::string& code, bool is_group) {
  auto& manager = CViewModelDataManager::Instance();
  if (manager.GetNoticeCount() != notices) {
    manager.Recheck(MarUIControl::StringToQString(code), is_group);
  }
}

}  // namespace TarnPlanView
