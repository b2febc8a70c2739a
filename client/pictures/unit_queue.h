#pragma once

#include <deque>
#include <optional>

#include "pictures/access_unit.h"

namespace TarnClient {

/// Which pictures of a stream are decoded.
enum class DecodingMode {
  All,
  /// The rest is kept until the next key frame, so that the stream can go on in the middle.
  KeyFrames
};

/// The coded pictures of a stream that are still to be decoded, or may be needed yet: all since the last key frame.
/// What has become too much, or too old, is skipped up to the next key frame. Thread: any, one at a time.
class CUnitQueue {
 public:
  explicit CUnitQueue(qint64 wait_for_key_ms) : wait_for_key_ms_(wait_for_key_ms) {}

  void Add(AccessUnit unit);
  /// The next one to be decoded; empty when there is none for now.
  std::optional<AccessUnit> Take(DecodingMode mode, qint64 now_ms);
  /// How many there are yet to be decoded.
  int Waiting(DecodingMode mode) const;
  /// How long the next one has been waiting.
  qint64 WaitMs(DecodingMode mode, qint64 now_ms) const;

 private:
  bool CanBegin(const AccessUnit& unit);
  void Skip(qint64 now_ms);
  void DropDone();
  bool HasKey() const { return key_ >= base_; }
  qint64 End() const { return base_ + static_cast<qint64>(units_.size()); }
  const AccessUnit& At(qint64 serial) const { return units_[static_cast<size_t>(serial - base_)]; }

  const qint64 wait_for_key_ms_;
  std::deque<AccessUnit> units_;
  qint64 base_ = 0;  // serial number of the first one
  qint64 next_ = 0;  // the first that is not decoded
  qint64 key_ = -1;  // the last key frame
  qint64 bytes_ = 0;
  int connection_ = -1;
  bool needs_key_ = true;
  std::optional<qint64> needs_key_since_;
  std::optional<qint64> key_taken_ms_;  // arrival of the last one that was taken by itself
};

}  // namespace TarnClient
