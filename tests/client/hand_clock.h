#pragma once

#include "wall/page_clock.h"

namespace TarnTest {

/// A clock of pages or turns, moved by hand.
class CHandClock : public TarnClient::CPageClock {
 public:
  void Begin(int seconds) override { ms_ = seconds * 1000; }
  void Stop() override {
    CPageClock::Stop();
    ms_ = 0;
  }
  int MsLeft() const override { return ms_; }
  void SetMsLeft(int ms) { ms_ = ms; }
  /// What is left of the time that is on; 0 when none is.
  int Seconds() const { return SecondsLeft(); }
  void EndTurn() {
    ms_ = 0;
    Q_EMIT SignalTurn();
  }

 private:
  int ms_ = 0;
};

}  // namespace TarnTest
