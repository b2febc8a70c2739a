#pragma once

#include <cstdint>

namespace view_plugin_protocol {

/// Why a call failed, for callers that act on it; the user reads the response's text. A host that gives no kind leaves
/// 0, and then nothing may be concluded. Only Gone takes rows out of trees; a read that was Unavailable is tried again
/// by itself until it is answered, one without a kind a few times.
enum ErrorKind : int32_t {
  UnknownFailure = 0,  ///< Nothing may be concluded, not even that the change was not made.
  Gone,                ///< What the request names does not exist, or not for this user.
  Changed,             ///< It was changed by somebody else since the request's revision.
  NotPermitted,        ///< The user lacks the right.
  Refused,             ///< A rule of the service forbids it; the same request will fail again.
  TooLarge,            ///< More than the service keeps.
  Unavailable,         ///< The service does not answer; the same request may succeed later.
};

}  // namespace view_plugin_protocol
