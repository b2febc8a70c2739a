#pragma once

#include <string>

namespace ResourceTreeKit {

/// Which part of the site's cameras a camera tree shows. A plain value.
struct LogicNodeParam {
  std::string root_region_index_code;  ///< Code of the region on top; empty: the whole site. UTF-8.
  bool show_offline = true;            ///< Whether cameras that cannot be reached are shown.
};

}  // namespace ResourceTreeKit
