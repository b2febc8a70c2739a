#include "store/database_call.h"

#include <utility>

namespace TarnHost::Store {

CDatabaseCall::CDatabaseCall(std::function<bool()> work) : work_(std::move(work)) {}

CDatabaseCall::Outcome CDatabaseCall::Await(std::chrono::milliseconds patience) {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto is_over = [this] { return state_ == kOver; };
  if (!over_.wait_for(lock, patience, is_over)) {
    if (state_ != kClaimed) {
      EndAs(kAbandoned);
    }
    over_.wait(lock, is_over);
  }
  return outcome_;
}

bool CDatabaseCall::Run() {
  std::function<bool()> work;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    work.swap(work_);
    if (state_ != kQueued) {
      return false;
    }
    state_ = kRunning;
  }
  const bool answered = work();
  work = nullptr;  // before the caller goes on: it may hold the last of what the caller is about to take down
  const std::lock_guard<std::mutex> lock(mutex_);
  EndAs(kDone);
  return answered;
}

bool CDatabaseCall::Claim() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (state_ == kRunning) {
    state_ = kClaimed;
  }
  return state_ == kClaimed;
}

void CDatabaseCall::Drop() {
  const std::lock_guard<std::mutex> lock(mutex_);
  EndAs(kDropped);
}

// With the mutex held. What it ended as first counts.
void CDatabaseCall::EndAs(Outcome outcome) {
  if (state_ != kOver) {
    state_ = kOver;
    outcome_ = outcome;
    over_.notify_all();
  }
}

}  // namespace TarnHost::Store
