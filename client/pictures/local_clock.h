#pragma once

#include <QDateTime>

namespace TarnClient {

/// The time of day here. Unlike Qt's own call it does not read the zone from its file each time, which is a part of
/// what a wall costs; a change of the zone is noticed within a minute. Thread: any.
QDateTime LocalNow();

}  // namespace TarnClient
