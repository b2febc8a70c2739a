#pragma once

#include "TarnHost/host_services.h"

namespace TarnHost {

/// Hands a call of the plug-in manager to the installed services, which stay alive until it returns.
template <class Request, class Response>
bool ForwardCall(bool (IHostServices::*call)(const Request&, Response&), const Request& request, Response& response) {
  const std::shared_ptr<IHostServices> services = InstalledHostServices();
  if (!services) {
    response.error_info = "The plan service has been stopped.";
    return false;
  }
  return (services.get()->*call)(request, response);
}

}  // namespace TarnHost
