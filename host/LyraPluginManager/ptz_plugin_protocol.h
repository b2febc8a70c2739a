#pragma once

#include <cstdint>
#include <list>
#include <string>

namespace ptz_plugin_protocol {

struct PresetInfo {
  int32_t preset_no = 0;
  std::string name;
};
struct GetPresetRequest {
  std::string camera_index_code;
};
struct GetPresetResponse {
  std::string error_info;
  std::list<PresetInfo> presets;
};

}  // namespace ptz_plugin_protocol
