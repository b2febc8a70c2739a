#include "pictures/key_frame_pace.h"

#include <algorithm>

namespace TarnClient {

void CKeyFramePace::Take(qint64 arrived_ms) {
  if (last_ms_ && !is_first_) {
    intervals_[measured_++ % kKept] = arrived_ms - *last_ms_;
  }
  is_first_ = !last_ms_;
  last_ms_ = arrived_ms;
}

std::optional<qint64> CKeyFramePace::IntervalMs() const {
  if (measured_ == 0) {
    return std::nullopt;
  }
  return *std::max_element(intervals_.begin(), intervals_.end());
}

}  // namespace TarnClient
