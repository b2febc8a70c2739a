#pragma once

#include <QtGlobal>

namespace MarUIControl {

/// How long an offer still stands: its own time, which can be held for a limited time. Thread: any, one at a time.
class OfferTime {
 public:
  OfferTime() = default;
  OfferTime(int time_ms, int longest_hold_ms) : whole_ms_(time_ms), left_ms_(time_ms), hold_left_ms_(longest_hold_ms) {}

  /// `passed_ms` went by; with `held` they come off what it may be held, as long as there is some of that.
  void Pass(qint64 passed_ms, bool held) {
    qint64 still = 0;
    if (held) {
      still = qMin(passed_ms, hold_left_ms_);
    }
    hold_left_ms_ -= still;
    left_ms_ = qMax(qint64(0), left_ms_ - (passed_ms - still));
  }

  bool IsOver() const { return left_ms_ <= 0; }
  /// 1 at the begin, 0 at the end.
  double PartLeft() const { return IsOver() ? 0 : double(left_ms_) / double(whole_ms_); }

 private:
  qint64 whole_ms_ = 0;
  qint64 left_ms_ = 0;
  qint64 hold_left_ms_ = 0;
};

}  // namespace MarUIControl
