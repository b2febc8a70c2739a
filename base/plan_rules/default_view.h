#pragma once

namespace view_plugin_protocol {

/// In place of a code: nothing opens at the start.
inline constexpr char kNoDefaultViewCode[] = "-3";

}  // namespace view_plugin_protocol
