#include "host_calls/user_check.h"

#include <QCoreApplication>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/result.h"

namespace HostCalls {

namespace {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using view_plugin_protocol::ResponseHeader;

auto CurrentUser() {
  return CallNow(&CViewBusinessInterfaceMgr::GetCurrentUser, view_plugin_protocol::GetCurrentUserRequest());
}

}  // namespace

std::function<std::optional<ResponseHeader>()> CheckOfUser() {
  ResponseHeader switched;
  switched.error_info =
      QCoreApplication::translate("HostCalls", "Not done: the user was switched before this change had its turn.")
          .toStdString();
  switched.error_kind = view_plugin_protocol::Refused;
  return [asked = CurrentUser(), switched]() -> std::optional<ResponseHeader> {
    if (!asked.ok) {
      return asked.response;
    }
    const auto now = CurrentUser();
    if (!now.ok) {
      return now.response;
    }
    if (now.response.user.id != asked.response.user.id) {
      return switched;
    }
    return std::nullopt;
  };
}

}  // namespace HostCalls
