#pragma once

#include "pictures/picture_status.h"

namespace TarnClient {

/// Why a window is not live, in words for programs that do not change with the language; empty when it is.
QString ReasonOf(const PictureStatus& status);

}  // namespace TarnClient
