#pragma once

#include <functional>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace HostCalls {

/// Remembers the current user for a call that is made later. The function, called on any thread right before the call,
/// answers why it must not be made any more, or nothing: no call runs in the name of another user, nor when the host
/// cannot say who the user is. Thread: GUI.
std::function<std::optional<view_plugin_protocol::ResponseHeader>()> CheckOfUser();

}  // namespace HostCalls
