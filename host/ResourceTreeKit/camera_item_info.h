#pragma once

#include <string>

namespace ResourceTreeKit {

/// A camera as the host's camera trees show it.
struct CCameraItemInfo {
  std::string index_code, name, region_index_code;
  bool online = false;
};

}  // namespace ResourceTreeKit
