#pragma once

#include <cstdint>

namespace view_plugin_protocol {

/// Why a call failed, for callers that act on it; the user reads the response's text. A host that gives no kind leaves
/// 0, and then nothing may be concluded.
enum ErrorKind : int32_t {
  UnknownFailure = 0,
  Gone,          // what the request names does not exist, or not for this user
  Changed,       // it was changed by somebody else since the request's revision
  NotPermitted,  // the user lacks the right
  Refused,       // a rule of the service forbids it; the same request will fail again
  TooLarge,      // more than the service keeps
  Unavailable,   // the service does not answer; the same request may succeed later
};

}  // namespace view_plugin_protocol
