#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace play_plugin_protocol {

/// Asks for the streams of a camera.
struct GetStreamAbiRequest {
  std::string camera_index_code;  ///< Code of the camera, as in PlanWindow::resource_code. UTF-8.
};
/// The streams of a camera.
struct GetStreamAbiResponse : view_plugin_protocol::ResponseHeader {
  std::list<int32_t> stream_types;  ///< 0 main, 1 sub, 2 smooth; others are offered by their number.
};

}  // namespace play_plugin_protocol
