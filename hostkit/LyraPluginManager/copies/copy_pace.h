#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace TarnHost::Store {

/// When a copy is written: a while after the first change that is not in it, and not again soon after. Where nothing
/// changes, the moment at which it was true is moved on now and then. A plain value.
struct CopyPace {
  using Clock = std::chrono::steady_clock;
  std::chrono::milliseconds calm{5000};    // after the change, for what comes with it
  std::chrono::milliseconds pause{60000};  // between two writings at least, and between two moments
  std::optional<Clock::time_point> changed, written, confirmed;

  bool IsDue(Clock::time_point now) const {
    return changed && now >= *changed + calm && (!written || now >= *written + pause);
  }
  bool IsMomentDue(Clock::time_point now) const {
    const auto last = std::max(written, confirmed);
    return !changed && (!last || now >= *last + pause);
  }
};

}  // namespace TarnHost::Store
