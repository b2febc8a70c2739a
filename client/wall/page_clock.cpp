#include "wall/page_clock.h"

namespace TarnClient {

namespace {

constexpr int kLeastSeconds = 1, kMostSeconds = 24 * 60 * 60;

}  // namespace

CPageClock::CPageClock(QObject* parent) : QObject(parent) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &CPageClock::SignalTurn);
}

void CPageClock::Begin(int seconds) {
  left_ms_ = qBound(kLeastSeconds, seconds, kMostSeconds) * 1000;
  if (!paused_) {
    timer_.start(left_ms_);
  }
}

void CPageClock::Stop() {
  timer_.stop();
  left_ms_ = 0;
  paused_ = false;
}

void CPageClock::SetPaused(bool paused) {
  if (paused == paused_) {
    return;
  }
  paused_ = paused;
  if (paused) {
    left_ms_ = timer_.isActive() ? timer_.remainingTime() : left_ms_;
    timer_.stop();
  } else if (left_ms_ > 0) {
    timer_.start(left_ms_);
  }
}

int CPageClock::SecondsLeft() const {
  return ((timer_.isActive() ? timer_.remainingTime() : left_ms_) + 999) / 1000;
}

}  // namespace TarnClient
