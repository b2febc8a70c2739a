#include "pictures/stream_choice.h"

namespace TarnClient {

namespace {

constexpr int kSmallBelow = 200, kLargeFrom = kSmallBelow * 134 / 100;
constexpr qint64 kRestMs = 5000;

}  // namespace

StreamKind OtherKind(StreamKind kind) {
  if (kind == StreamKind::Main) {
    return StreamKind::Sub;
  }
  return StreamKind::Main;
}

StreamKind KindForHeight(StreamKind bound, StreamKind now, int height) {
  if (height < kSmallBelow) {
    return StreamKind::Sub;
  }
  if (height >= kLargeFrom) {
    return bound;
  }
  return now;
}

// The first choice is none between two streams, so it neither waits nor lets others wait.
StreamKind CStreamChoice::Take(int height, qint64 now_ms) {
  const StreamKind wanted = KindForHeight(bound_, kind_, height);
  if (!chosen_) {
    chosen_ = true;
    kind_ = wanted;
  } else if (wanted != kind_ && now_ms - changed_ms_.value_or(now_ms - kRestMs) >= kRestMs) {
    changed_ms_ = now_ms;
    kind_ = wanted;
  }
  return kind_;
}

}  // namespace TarnClient
