#include "wall/turn_time.h"

#include "wall/page_clock.h"

namespace TarnClient {

CTurnTime::CTurnTime(int least_seconds, const QVector<int>& page_seconds)
    : least_(CPageClock::Bounded(least_seconds)), pages_(page_seconds) {}

int CTurnTime::Seconds() const {
  return qMax(least_, SecondsFrom(0));
}

int CTurnTime::SecondsLeftFrom(int page, int left) const {
  const int rest = SecondsFrom(page);
  if (SecondsFrom(0) >= least_) {
    return rest;
  }
  return qMax(left, rest);
}

bool CTurnTime::HasTimeForAPage(int left_ms) {
  return left_ms >= CPageClock::kLeastSeconds * 1000;
}

int CTurnTime::SecondsFrom(int page) const {
  qint64 sum = 0;
  for (int i = page; i < pages_.size(); ++i) {
    sum += CPageClock::Bounded(pages_[i]);
  }
  return CPageClock::Bounded(sum);
}

}  // namespace TarnClient
