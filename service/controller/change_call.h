#pragma once

#include <functional>
#include <string>

#include "async_call.h"
#include "host_call.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

/// What the changes of one node keep: whoever moves a plan twice finds it where it was put last. All controllers share
/// it, since a node may stand in several trees.
CCallOrder& ChangeOrder();

/// For a change of `code` that is asked for now: a question to be put when its turn has come, on any thread. Answers
/// why it may not be made any more, or nothing: a change must not run with the rights of the next user.
std::function<std::string()> UserCheck(const std::string& code);

/// To be called after an own change was applied, with the manager's notice count from when it was asked for: what was
/// told meanwhile may be newer than the change, so the row is brought to what the host says now.
void RecheckIfTold(int notices, const std::string& code, bool is_group);

/// Makes a host call that changes the plan or group `code`, after the changes of it that were asked for before, and
/// hands its answer to `done` on the thread of `receiver`. Thread: GUI.
template <class Request, class Response, class Done>
void CallChange(QObject* receiver,
                bool (LyraPluginManager::CViewBusinessInterfaceMgr::*call)(const Request&, Response&),
                const Request& request, const std::string& code, bool is_group, Done done) {
  const auto task = [call = HostCall(call, request), check = UserCheck(code)] {
    Answer<Response> refused;
    refused.response.error_info = check();
    return refused.response.error_info.empty() ? call() : refused;
  };
  const int notices = CViewModelDataManager::Instance().GetNoticeCount();
  CallInOrder(ChangeOrder(), code, receiver, task, [=](const Answer<Response>& answer) {
    done(answer);
    if (answer.ok) {
      RecheckIfTold(notices, code, is_group);
    }
  });
}

}  // namespace TarnPlanView
