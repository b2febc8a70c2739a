#pragma once

#include <optional>

#include "pictures/stream_access.h"

namespace TarnClient {

/// The other one of the two.
StreamKind OtherKind(StreamKind kind);

/// The stream for a picture `height` pixels high: the smaller one below 200, back at 1.34 times that, so that a window
/// whose border is being dragged does not go to and fro. `bound` is what the plan says, and never exceeded.
StreamKind KindForHeight(StreamKind bound, StreamKind now, int height);

/// Lets a window change its stream once in 5 s at most.
class CStreamChoice {
 public:
  explicit CStreamChoice(StreamKind bound) : bound_(bound), kind_(bound) {}

  /// The stream to show from now on.
  StreamKind Take(int height, qint64 now_ms);
  StreamKind Kind() const { return kind_; }

 private:
  const StreamKind bound_;
  StreamKind kind_;
  std::optional<qint64> changed_ms_;
  bool chosen_ = false;
};

}  // namespace TarnClient
