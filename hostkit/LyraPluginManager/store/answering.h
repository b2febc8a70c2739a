#pragma once

#include <atomic>
#include <functional>
#include <utility>

namespace TarnHost::Store {

/// Whether a store answers, as far as its threads have found out; one object for all threads of a store. Thread: any.
class CAnswering {
 public:
  /// `again` is called, on the thread that was stuck, when the store answers again. Before the first OnStuck().
  void SetAgain(std::function<void()> again) { again_ = std::move(again); }

  bool IsLost() const { return stuck_threads_ > 0; }
  void OnStuck() { ++stuck_threads_; }
  void OnAnswered() {
    if (--stuck_threads_ == 0 && again_) {
      again_();
    }
  }

 private:
  std::atomic<int> stuck_threads_{0};
  std::function<void()> again_;
};

}  // namespace TarnHost::Store
