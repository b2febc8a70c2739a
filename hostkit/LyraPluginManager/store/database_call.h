#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace TarnHost::Store {

/// One call of a database thread: its work, and the caller who waits for it but not for ever.
///
/// Work that its caller abandoned before it began is dropped. Once begun it runs to its end, awaited or not: so it
/// holds all that it needs by value or shared, nothing of its caller's.
class CDatabaseCall {
 public:
  enum Outcome { kDone, kAbandoned, kDropped };

  /// `work` answers whether the database did.
  explicit CDatabaseCall(std::function<bool()> work);

  /// Waits for the end of the work, which is followed by nothing when this does not answer kDone. Thread: the caller's.
  Outcome Await(std::chrono::milliseconds patience);

  /// Answers what the work does; false when there was nothing left to do. Once. Thread: the database's.
  bool Run();
  /// Whether the caller still waits; if so it waits for the end of the work, which is near. Thread: as Run().
  bool Claim();

  /// The work will not end in time, or never begin. Thread: any.
  void Drop();

 private:
  enum State { kQueued, kRunning, kClaimed, kOver };

  void EndAs(Outcome outcome);

  std::mutex mutex_;
  std::condition_variable over_;
  std::function<bool()> work_;
  State state_ = kQueued;
  Outcome outcome_ = kDone;
};

}  // namespace TarnHost::Store
