#pragma once

#include <QString>

#include "devices/device_records.h"

namespace TarnClient {

/// What to say when a device did not answer as hoped; `words` are its own and may be empty.
QString TextOf(DeviceFailure failure, const QString& words);

}  // namespace TarnClient
