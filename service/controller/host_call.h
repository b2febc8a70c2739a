#pragma once

#include "LyraPluginManager/view_business_interface_mgr.h"

namespace TarnPlanView {

/// A host call's answer: whether it succeeded, and the response.
template <class Response>
struct Answer {
  bool ok = false;
  Response response;
};

/// A task that makes one host call.
template <class Request, class Response>
auto HostCall(bool (LyraPluginManager::CViewBusinessInterfaceMgr::*call)(const Request&, Response&),
              const Request& request) {
  return [call, request] {
    Answer<Response> answer;
    answer.ok = (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().*call)(request, answer.response);
    return answer;
  };
}

}  // namespace TarnPlanView
