#include "pictures/local_clock.h"

#include <atomic>

namespace TarnClient {

namespace {

constexpr qint64 kMinuteMs = 60 * 1000;

int OffsetSeconds(qint64 now_ms) {
  return QDateTime::fromMSecsSinceEpoch(now_ms).offsetFromUtc();
}

}  // namespace

QDateTime LocalNow() {
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  static std::atomic<qint64> minute{now / kMinuteMs};
  static std::atomic<int> offset{OffsetSeconds(now)};
  if (minute.exchange(now / kMinuteMs) != now / kMinuteMs) {
    offset = OffsetSeconds(now);
  }
  return QDateTime::fromMSecsSinceEpoch(now, Qt::OffsetFromUTC, offset);
}

}  // namespace TarnClient
