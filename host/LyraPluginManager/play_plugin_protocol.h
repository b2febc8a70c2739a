#pragma once

#include <cstdint>
#include <list>
#include <string>

namespace play_plugin_protocol {

struct GetStreamAbiRequest {
  std::string camera_index_code;
};
struct GetStreamAbiResponse {
  std::string error_info;
  std::list<int32_t> stream_types;  // 0 main, 1 sub
};

}  // namespace play_plugin_protocol
