#pragma once

#include <functional>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace HostCalls {

/// For a call that is asked for now on behalf of the current user: a question to be put right before it is made, on
/// any thread. Answers why it may not be made any more, or nothing: no call runs in the name of the next user, nor when
/// the host cannot say who that is. Thread: GUI.
std::function<std::optional<view_plugin_protocol::ResponseHeader>()> CheckOfUser();

}  // namespace HostCalls
