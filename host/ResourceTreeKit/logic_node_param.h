#pragma once

#include <string>

namespace ResourceTreeKit {

/// Which part of the site's cameras a camera tree shows.
struct LogicNodeParam {
  std::string root_region_index_code;  // empty: the whole site
  bool show_offline = true;
};

}  // namespace ResourceTreeKit
