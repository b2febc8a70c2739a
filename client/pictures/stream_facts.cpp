#include "pictures/stream_facts.h"

#include "pictures/local_clock.h"

namespace TarnClient {

namespace {

// A decoder may hold some back to put them into their order, and a stream may be joined long before a key frame.
constexpr int kMostHeldBack = 16;

PictureLoss LossOf(const StreamFacts& facts, qint64 now_ms, const StreamTimings& timings) {
  if (facts.loss == PictureLoss::None && IsUnreadable(facts, now_ms, timings)) {
    return PictureLoss::UnknownCodec;
  }
  return facts.loss;
}

// Where only key frames are decoded, none is late before its time has come.
qint64 LateAfter(const StreamFacts& facts, const StreamTimings& timings) {
  const qint64 interval = facts.key_frames.IntervalMs().value_or(0);
  if (!facts.decodes_key_frames) {
    return timings.late;
  }
  return qMax(timings.late, interval + interval / 4);
}

PictureState StateOf(const PictureStatus& status, bool playing, qint64 late_after) {
  if (status.loss != PictureLoss::None) {
    return PictureState::Lost;
  }
  if (!playing || status.age_ms < 0) {
    return PictureState::Opening;
  }
  if (status.age_ms >= late_after) {
    return PictureState::Late;
  }
  return PictureState::Live;
}

}  // namespace

bool IsUnreadable(const StreamFacts& facts, qint64 now_ms, const StreamTimings& timings) {
  return facts.playing && facts.tries > kMostHeldBack && now_ms - *facts.first_try_ms > timings.open + timings.read;
}

PictureStatus StatusOf(const StreamFacts& facts, qint64 now_ms, const StreamTimings& timings) {
  PictureStatus status;
  status.kind = QStringLiteral("rtsp");
  status.loss = LossOf(facts, now_ms, timings);
  if (facts.taken_ms) {
    status.age_ms = qMax<qint64>(0, now_ms - *facts.taken_ms);
    status.taken = LocalNow().addMSecs(-status.age_ms);
  }
  status.size = facts.size;
  status.repeats = facts.repeats;
  status.key_frames_only = facts.key_frames_only;
  status.state = StateOf(status, facts.playing, LateAfter(facts, timings));
  return status;
}

}  // namespace TarnClient
