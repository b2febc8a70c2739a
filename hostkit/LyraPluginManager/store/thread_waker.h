#pragma once

#include <chrono>

namespace TarnHost::Store {

/// Lets a thread sleep until another one wakes it or a socket has something to read.
class CThreadWaker {
 public:
  using Clock = std::chrono::steady_clock;

  CThreadWaker();
  ~CThreadWaker();
  CThreadWaker(const CThreadWaker&) = delete;
  CThreadWaker& operator=(const CThreadWaker&) = delete;

  /// Ends the present sleep, or else the next one before it begins. Thread: any.
  void Wake();
  /// Sleeps until `deadline` at the latest; Clock::time_point::max() is never. Whether there is something to read from
  /// `socket`, or its end; -1 is none. Thread: the one that sleeps.
  bool SleepUntil(Clock::time_point deadline, int socket);

 private:
  const int event_;
};

}  // namespace TarnHost::Store
