#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace ptz_plugin_protocol {

/// A position that a camera has stored.
struct PresetInfo {
  int32_t preset_no = 0;  ///< From 1; 0 stands for none.
  std::string name;       ///< UTF-8. Empty: it is shown by its number.
};
/// Asks for the positions of a camera.
struct GetPresetRequest {
  std::string camera_index_code;  ///< Code of the camera, as in PlanWindow::resource_code. UTF-8.
};
/// The positions of a camera.
struct GetPresetResponse : view_plugin_protocol::ResponseHeader {
  std::list<PresetInfo> presets;  ///< In the order in which they are offered; empty for a camera without any.
};

/// Turns a camera.
struct GotoPresetRequest {
  std::string camera_index_code;  ///< Code of the camera. UTF-8.
  int32_t preset_no = 0;          ///< One of its positions.
};
/// The header alone.
struct GotoPresetResponse : view_plugin_protocol::ResponseHeader {};

}  // namespace ptz_plugin_protocol
