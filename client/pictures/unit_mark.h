#pragma once

#include "pictures/access_unit.h"

namespace TarnClient {

/// The same for units that code the same picture in the same way. What coders count or write down beside it makes no
/// difference.
quint64 MarkOf(const AccessUnit& unit);

}  // namespace TarnClient
