#pragma once

#include <QDateTime>
#include <QString>

#include "host_export.h"

namespace MarUIControl {

/// A moment as the user reads it when it is `now`: "14:05", or "2024-03-01 14:05" where
/// the day is not today's; in the digits of the user's locale. Thread: any.
TARN_HOST_EXPORT QString MomentText(const QDateTime& moment, const QDateTime& now);

}  // namespace MarUIControl
