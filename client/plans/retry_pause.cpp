#include "plans/retry_pause.h"

#include <algorithm>

namespace TarnClient {

namespace {

constexpr int kFirstSeconds = 3, kMostSeconds = 60;
constexpr int kMostDoublings = 5;

}  // namespace

int RetryPauseSeconds(int failures) {
  const int doublings = std::clamp(failures - 1, 0, kMostDoublings);
  return std::min(kFirstSeconds << doublings, kMostSeconds);
}

}  // namespace TarnClient
