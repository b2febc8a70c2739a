#pragma once

#include <QDateTime>
#include <QString>

#include "host_export.h"

namespace MarUIControl {

/// A moment as the user reads it when it is `now`: the day only where it is not today's. Thread: any.
TARN_HOST_EXPORT QString MomentText(const QDateTime& moment, const QDateTime& now);

}  // namespace MarUIControl
