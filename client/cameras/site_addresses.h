#pragma once

#include "pictures/stream_addresses.h"

namespace TarnClient {

/// Asks the site how these cameras are reached; the reader of a CStreamAddresses. Thread: any.
std::optional<CameraStreamsByCode> ReadSiteAddresses(const std::vector<std::string>& cameras);

}  // namespace TarnClient
