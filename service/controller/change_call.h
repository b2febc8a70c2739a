#pragma once

#include <string>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"

namespace TarnPlanView {

/// What the changes of one node keep: a plan that is moved twice ends where it was put last. All controllers share
/// it, since a node may stand in several trees.
HostCalls::CCallOrder& ChangeOrder();
/// What the entries of the play log keep: the host stamps them when it writes them.
HostCalls::CCallOrder& PlayLogOrder();

/// To be called after an own change was applied, with the manager's notice count from when it was asked for: what was
/// noticed meanwhile may be newer than the change, so the row is brought to what the host says now.
void RecheckIfNoticed(int notices, const std::string& code, bool is_group);

/// Asks for a change of the plan or group `code`: after those of it that were asked for before, and only as the user
/// who is logged in now.
template <class Request, class Response>
auto AskForChange(bool (LyraPluginManager::CViewBusinessInterfaceMgr::*method)(const Request&, Response&),
                  const Request& request, const std::string& code) {
  return HostCalls::Ask(method, request).AsCurrentUser().InOrder(ChangeOrder(), code);
}

}  // namespace TarnPlanView
