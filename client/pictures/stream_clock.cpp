#include "pictures/stream_clock.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace TarnClient {

namespace {

// Pictures that are shown in another order than they come go back by less.
constexpr qint64 kJumpBackMs = 1000, kJumpAheadMs = 10000;
// On a line that is too slow large pictures take many times as long as small ones.
constexpr double kMostOfUsualPause = 2, kUnevenMs = 50, kPausePart = 1.0 / 8;
constexpr qint64 kMissingMs = 1000;
constexpr double kMoreThanMeasured = 0.1;

}  // namespace

bool CStreamClock::HasJumped(qint64 moved_ms, qint64 passed_ms) const {
  return moved_ms < -kJumpBackMs || moved_ms - passed_ms > kJumpAheadMs;
}

// What a stream's clock misses while nothing can have been held back has made no picture older.
void CStreamClock::Follow(qint64 moved_ms, qint64 passed_ms) {
  const auto pause = static_cast<double>(passed_ms);
  if (usual_pause_ms_ <= 0) {
    usual_pause_ms_ = pause;
  }
  if (pause > kMostOfUsualPause * usual_pause_ms_ + kUnevenMs) {
    even_ = {};
  } else {
    even_.lasted_ms += passed_ms;
    even_.missing_ms += passed_ms - moved_ms;
  }
  usual_pause_ms_ += (pause - usual_pause_ms_) * kPausePart;
  if (std::abs(even_.missing_ms) < kMissingMs) {
    return;
  }
  const Even even = std::exchange(even_, {});
  const double drift = static_cast<double>(even.missing_ms) / static_cast<double>(std::max<qint64>(1, even.lasted_ms));
  if (drift > kUsualDrift) {
    shortest_way_ += static_cast<double>(even.missing_ms);
    drift_ = std::max(drift_, std::min(1.0, drift) + kMoreThanMeasured);
  }
}

qint64 CStreamClock::TakenAt(quint32 stamp, qint64 arrived_ms) {
  const qint64 moved = static_cast<qint32>(stamp - stamp_.value_or(stamp));
  const qint64 moved_ms = moved * 1000 / rate_, passed_ms = arrived_ms - arrived_ms_;
  const bool begins = !stamp_ || HasJumped(moved_ms, passed_ms);
  ticks_ += moved;
  const qint64 position = ticks_ * 1000 / rate_;
  const auto way = static_cast<double>(arrived_ms - position);
  if (begins) {
    shortest_way_ = way;
    even_ = {};
  } else {
    shortest_way_ += drift_ * static_cast<double>(passed_ms);
    Follow(moved_ms, passed_ms);
  }
  shortest_way_ = std::min(shortest_way_, way);
  stamp_ = stamp;
  arrived_ms_ = arrived_ms;
  return std::min(arrived_ms, position + static_cast<qint64>(shortest_way_));
}

}  // namespace TarnClient
