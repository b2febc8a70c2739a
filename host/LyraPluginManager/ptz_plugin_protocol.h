#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace ptz_plugin_protocol {

struct PresetInfo {
  int32_t preset_no = 0;
  std::string name;
};
struct GetPresetRequest {
  std::string camera_index_code;
};
struct GetPresetResponse : view_plugin_protocol::ResponseHeader {
  std::list<PresetInfo> presets;
};

}  // namespace ptz_plugin_protocol
