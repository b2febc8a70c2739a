#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "async_call.h"
#include "host_call.h"

namespace TarnPlanView {

/// What the changes of one node keep: whoever moves a plan twice finds it where it was put last. All controllers share
/// it, since a node may stand in several trees.
CCallOrder& ChangeOrder();
/// What the entries of the play log keep: the host stamps them when it writes them.
CCallOrder& PlayLogOrder();

/// For a call of this key that is asked for now: a question to be put when its turn has come, on any thread. Answers
/// why it may not be made any more, or nothing: a call that waited must not run in the name of the next user, nor when
/// the host cannot say who that is.
using Refusal = std::optional<view_plugin_protocol::ResponseHeader>;
std::function<Refusal()> UserCheck(const CCallOrder& order, const std::string& key);

/// To be called after an own change was applied, with the manager's notice count from when it was asked for: what was
/// told meanwhile may be newer than the change, so the row is brought to what the host says now.
void RecheckIfTold(int notices, const std::string& code, bool is_group);

/// Makes a host call after those of its key that were asked for before, by the same user, and hands its answer to
/// `done` on the thread of `receiver`. Thread: GUI.
template <class Request, class Response, class Done>
void CallInTurn(CCallOrder& order, const std::string& key, QObject* receiver,
                bool (LyraPluginManager::CViewBusinessInterfaceMgr::*call)(const Request&, Response&),
                const Request& request, Done done) {
  const auto task = [call = HostCall(call, request), check = UserCheck(order, key)] {
    const Refusal refusal = check();
    if (!refusal) {
      return call();
    }
    Answer<Response> refused;
    static_cast<view_plugin_protocol::ResponseHeader&>(refused.response) = *refusal;
    return refused;
  };
  CallInOrder(order, key, receiver, task, std::move(done));
}

/// The same for a call that changes the plan or group `code`.
template <class Request, class Response, class Done>
void CallChange(QObject* receiver,
                bool (LyraPluginManager::CViewBusinessInterfaceMgr::*call)(const Request&, Response&),
                const Request& request, const std::string& code, Done done) {
  CallInTurn(ChangeOrder(), code, receiver, call, request, std::move(done));
}

}  // namespace TarnPlanView
