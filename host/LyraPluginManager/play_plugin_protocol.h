#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace play_plugin_protocol {

struct GetStreamAbiRequest {
  std::string camera_index_code;
};
struct GetStreamAbiResponse : view_plugin_protocol::ResponseHeader {
  std::list<int32_t> stream_types;  // 0 main, 1 sub
};

}  // namespace play_plugin_protocol
