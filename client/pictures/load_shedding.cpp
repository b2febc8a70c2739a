#include "pictures/load_shedding.h"

#include <algorithm>

namespace TarnClient {

namespace {

constexpr qint64 kBehindMs = 4000, kCalmMs = 20000;
constexpr double kCalmBelow = 0.6;

// Whether it has been so for `limit`, which then begins again.
bool HasLasted(bool is_so, qint64 now_ms, qint64 limit, std::optional<qint64>* since) {
  if (!is_so) {
    since->reset();
    return false;
  }
  if (now_ms - since->value_or(now_ms) < limit) {
    *since = since->value_or(now_ms);
    return false;
  }
  *since = now_ms;
  return true;
}

}  // namespace

// A large wall would take minutes one by one.
int CLoadShedding::Step(int count) {
  return std::max(1, count / 4);
}

int CLoadShedding::Take(qint64 now_ms, bool behind, double load, int sheddable) {
  if (HasLasted(behind, now_ms, kBehindMs, &behind_since_)) {
    count_ += Step(sheddable - count_);
  }
  if (HasLasted(!behind && load < kCalmBelow, now_ms, kCalmMs, &calm_since_)) {
    count_ -= Step(count_);
  }
  count_ = std::clamp(count_, 0, sheddable);
  return count_;
}

}  // namespace TarnClient
