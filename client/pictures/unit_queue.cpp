#include "pictures/unit_queue.h"

#include <algorithm>
#include <utility>

namespace TarnClient {

namespace {

constexpr qint64 kMostBytes = 8 * 1024 * 1024, kLongestWaitMs = 2000;
// Where every picture is a key frame, most can be done without.
constexpr qint64 kBetweenKeysMs = 900;
constexpr size_t kMostUnits = 1500;

}  // namespace

// A stream may have no key frames at all and renew its pictures piece by piece.
bool CUnitQueue::CanBegin(const AccessUnit& unit) {
  if (unit.connection != connection_) {
    connection_ = unit.connection;
    key_taken_ms_.reset();
    needs_key_ = true;
    needs_key_since_.reset();
  }
  if (!needs_key_) {
    return true;
  }
  needs_key_since_ = needs_key_since_.value_or(unit.arrived_ms);
  needs_key_ = !unit.is_key && unit.arrived_ms - *needs_key_since_ < wait_for_key_ms_;
  return !needs_key_;
}

void CUnitQueue::Add(AccessUnit unit) {
  if (!CanBegin(unit)) {
    return;
  }
  if (unit.is_key) {
    key_ = End();
  }
  bytes_ += unit.bytes.size();
  units_.push_back(std::move(unit));
  if (bytes_ > kMostBytes || units_.size() > kMostUnits) {
    Skip(units_.back().arrived_ms);
  }
}

// To the last key frame, where that helps; else nothing of all this can be decoded in time.
void CUnitQueue::Skip(qint64 now_ms) {
  if (HasKey() && key_ > next_ && now_ms - At(key_).arrived_ms <= kLongestWaitMs) {
    next_ = key_;
    DropDone();
    return;
  }
  base_ = next_ = End();
  units_.clear();
  bytes_ = 0;
  key_ = -1;
  needs_key_ = true;
  needs_key_since_.reset();
}

void CUnitQueue::DropDone() {
  qint64 needed = next_;
  if (HasKey()) {
    needed = std::min(next_, key_);
  }
  while (base_ < needed) {
    bytes_ -= units_.front().bytes.size();
    units_.pop_front();
    ++base_;
  }
}

std::optional<AccessUnit> CUnitQueue::Take(DecodingMode mode, qint64 now_ms) {
  if (mode == DecodingMode::KeyFrames) {
    if (!HasKey() || key_ < next_ || At(key_).arrived_ms - key_taken_ms_.value_or(-kBetweenKeysMs) < kBetweenKeysMs) {
      return std::nullopt;
    }
    next_ = key_;
    key_taken_ms_ = At(key_).arrived_ms;
  } else if (WaitMs(mode, now_ms) > kLongestWaitMs && key_ > next_) {
    Skip(now_ms);
  }
  if (next_ >= End()) {
    return std::nullopt;
  }
  const AccessUnit unit = At(next_);
  ++next_;
  DropDone();
  return unit;
}

int CUnitQueue::Waiting(DecodingMode mode) const {
  if (mode == DecodingMode::KeyFrames) {
    return int(HasKey() && key_ >= next_);
  }
  return static_cast<int>(End() - next_);
}

qint64 CUnitQueue::WaitMs(DecodingMode mode, qint64 now_ms) const {
  if (Waiting(mode) == 0) {
    return 0;
  }
  if (mode == DecodingMode::KeyFrames) {
    return now_ms - At(key_).arrived_ms;
  }
  return now_ms - At(next_).arrived_ms;
}

}  // namespace TarnClient
