#pragma once

#include "TarnHost/host_services.h"

namespace TarnHost {

/// What a response says when there is no service any more.
void FillStopped(view_plugin_protocol::ResponseHeader* response);

/// Hands a call of the plug-in manager to the installed services, which stay alive until it returns.
template <class Request, class Response>
bool ForwardCall(bool (IHostServices::*call)(const Request&, Response&), const Request& request, Response& response) {
  const std::shared_ptr<IHostServices> services = InstalledHostServices();
  if (!services) {
    FillStopped(&response);
    return false;
  }
  return (services.get()->*call)(request, response);
}

}  // namespace TarnHost
