#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>

#include "store/store_error.h"

namespace TarnHost::Store {

/// Whether a store answers, as far as its threads have found out; one object for all threads of a store. Thread: any.
class CAnswering {
 public:
  /// `news` is called when the store may have stopped answering or answer again, on any thread. Before the threads'
  /// first task.
  void SetNews(std::function<void()> news) { news_ = std::move(news); }

  /// Whether to ask it would be in vain, as far as is known.
  bool IsLost() const { return IsStuck() || is_disconnected_; }
  /// Whether there is no connection to it.
  bool IsDisconnected() const { return is_disconnected_; }
  /// Whether it keeps a thread waiting.
  bool IsStuck() const { return stuck_threads_ > 0; }
  /// Why there is no connection to it; empty when there is one.
  void SetDisconnected(const std::optional<CStoreError>& why) {
    const std::lock_guard<std::mutex> lock(mutex_);
    why_ = why;
    is_disconnected_ = why.has_value();
  }
  /// What to say to who is not let wait.
  CStoreError Refusal() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return why_.value_or(CStoreError::NotAnswering());
  }
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
  std::atomic<bool> is_disconnected_{false};
  mutable std::mutex mutex_;
  std::optional<CStoreError> why_;
  std::function<void()> news_;
};

}  // namespace TarnHost::Store
