#include "wall/page_clock.h"

namespace TarnClient {

CPageClock::CPageClock(QObject* parent) : QObject(parent) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] {
    left_ms_ = 0;
    Q_EMIT SignalTurn();
  });
}

void CPageClock::Begin(int seconds) {
  left_ms_ = Bounded(seconds) * 1000;
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
    left_ms_ = CPageClock::MsLeft();
    timer_.stop();
  } else if (left_ms_ > 0) {
    timer_.start(left_ms_);
  }
}

int CPageClock::MsLeft() const {
  if (timer_.isActive()) {
    return timer_.remainingTime();
  }
  return left_ms_;
}

}  // namespace TarnClient
