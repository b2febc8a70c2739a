#pragma once

#include <string>

namespace ResourceTreeKit {

/// A region of the site as the host's camera trees show it.
struct CRegionItemInfo {
  std::string index_code, name;
  std::string parent_index_code;  // empty for a region at the top
};

}  // namespace ResourceTreeKit
