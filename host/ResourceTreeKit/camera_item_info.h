#pragma once

#include <QMetaType>
#include <string>

namespace ResourceTreeKit {

/// A camera as the host's camera trees show it. A plain value.
struct CCameraItemInfo {
  std::string index_code;         ///< Its code, as in PlanWindow::resource_code; empty: no camera. UTF-8.
  std::string name;               ///< As shown. UTF-8.
  std::string region_index_code;  ///< Code of the region that it stands in.
  bool online = false;            ///< Whether it can be reached, as far as the host knows.
};

}  // namespace ResourceTreeKit

Q_DECLARE_METATYPE(ResourceTreeKit::CCameraItemInfo)
