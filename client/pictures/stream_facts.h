#pragma once

#include <QSize>
#include <optional>

#include "pictures/key_frame_pace.h"
#include "pictures/picture_status.h"
#include "pictures/stream_timings.h"

namespace TarnClient {

/// What has happened to a stream; times by SteadyMs().
struct StreamFacts {
  bool playing = false;  // the camera has said that it sends
  /// Why the last attempt or connection ended; stays until it plays again.
  PictureLoss loss = PictureLoss::None;
  std::optional<qint64> taken_ms;      // of the latest picture
  int tries = 0;                       // to decode something, since the latest picture or the beginning
  std::optional<qint64> first_try_ms;  // of these
  bool repeats = false;
  bool decodes_key_frames = false;  // no others
  bool key_frames_only = false;     // likewise, though it is looked at
  CKeyFramePace key_frames;
  QSize size;
};

/// Whether something comes, and no picture can be made of it.
bool IsUnreadable(const StreamFacts& facts, qint64 now_ms, const StreamTimings& timings);
PictureStatus StatusOf(const StreamFacts& facts, qint64 now_ms, const StreamTimings& timings);

}  // namespace TarnClient
