#pragma once

#include <QString>

#include "host_export.h"

namespace TarnHost {

/// Of the library that is loaded, as in "1.0.0". Thread: any.
TARN_HOST_EXPORT QString HostVersion();

}  // namespace TarnHost
