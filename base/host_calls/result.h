#pragma once

#include <string>

namespace HostCalls {

/// The answer of one host call. When it is not ok the response holds nothing but its error.
template <class Response>
struct Result {
  using ResponseType = Response;
  bool ok = false;
  Response response;
};

/// Makes one call of the host on the calling thread, for tasks that make several.
template <class Host, class Request, class Response>
Result<Response> CallNow(bool (Host::*method)(const Request&, Response&), const Request& request) {
  Result<Response> result;
  result.ok = (Host::Instance().*method)(request, result.response);
  return result;
}

}  // namespace HostCalls
