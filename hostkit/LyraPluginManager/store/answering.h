#pragma once

#include <atomic>
#include <functional>
#include <utility>

namespace TarnHost::Store {

/// Whether a store answers, as far as its threads have found out; one object for all threads of a store. Thread: any.
class CAnswering {
 public:
  /// `news` is called when the store may have stopped answering or answer again, on any thread. Before the threads'
  /// first task.
  void SetNews(std::function<void()> news) { news_ = std::move(news); }

  bool IsLost() const { return stuck_threads_ > 0; }
  void OnStuck() { ++stuck_threads_; }
  void OnAnswered() { --stuck_threads_; }
  /// After either, without a lock.
  void PassOn() const {
    if (news_) {
      news_();
    }
  }

 private:
  std::atomic<int> stuck_threads_{0};
  std::function<void()> news_;
};

}  // namespace TarnHost::Store
