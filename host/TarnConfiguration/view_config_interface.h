#pragma once

#include <memory>
#include <string>

#include "host_export.h"

namespace TarnConfiguration {

/// The client's configuration as plug-ins see it. Thread: any.
class TARN_HOST_EXPORT IViewConfigInterface {
 public:
  virtual ~IViewConfigInterface() = default;
  /// The site (station) that this client is logged in to. UTF-8. Goes into drags, so that a wall takes no rows of
  /// another site's client.
  virtual std::string GetStationId() const = 0;
};

/// The configuration of the running client; null while the host is not up, which the plug-in only logs. Thread: any.
TARN_HOST_EXPORT std::shared_ptr<IViewConfigInterface> CreateViewConfigInterface();

}  // namespace TarnConfiguration
