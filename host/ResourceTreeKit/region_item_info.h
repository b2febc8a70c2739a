#pragma once

#include <string>

namespace ResourceTreeKit {

/// A region of the site as the host's camera trees show it. A plain value.
struct CRegionItemInfo {
  std::string index_code;         ///< Its code. UTF-8.
  std::string name;               ///< As shown. UTF-8.
  std::string parent_index_code;  ///< Code of the region that it stands in; empty for a region at the top.
};

}  // namespace ResourceTreeKit
