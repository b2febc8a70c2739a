#pragma once

#include <atomic>
#include <memory>

namespace HostCalls {

/// Which calls under way their owner still wants answered.
///
/// A call made with Ask(...).Within(scope) is answered unless the scope was dropped or destroyed since; one made with
/// Replacing(scope) drops the older ones first, so that only the newest is answered. Thread: that of its owner.
class CCallScope {
 public:
  /// What one call keeps of its scope. Thread: any.
  class Ticket {
   public:
    /// Whether the scope was dropped since.
    bool IsDropped() const { return *dropped_; }

   private:
    friend class CCallScope;
    std::shared_ptr<std::atomic<bool>> dropped_;
    std::shared_ptr<int> open_;
  };

  CCallScope() = default;
  CCallScope(const CCallScope&) = delete;
  CCallScope& operator=(const CCallScope&) = delete;
  ~CCallScope() { Drop(); }

  /// No call that is under way is answered any more; a task that looks at its ticket may end early.
  void Drop();
  /// Whether an answer is still to come.
  bool IsUnderWay() const { return *open_ > 0; }

  /// To see later whether the scope was dropped since, without a call.
  Ticket Current() const;
  /// Begins a call.
  Ticket Enter();
  /// Ends a call: false when its answer is not to be delivered.
  static bool Leave(const Ticket& ticket);

 private:
  std::shared_ptr<std::atomic<bool>> dropped_ = std::make_shared<std::atomic<bool>>(false);
  std::shared_ptr<int> open_ = std::make_shared<int>(0);
};

}  // namespace HostCalls
