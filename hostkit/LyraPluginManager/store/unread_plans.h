#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <set>

namespace TarnHost::Store {

/// Plans that a tree could not read when it heard of a change: it does not ask a second time by itself, so they are
/// reported once more when the store answers again. Thread: any.
class CUnreadPlans {
 public:
  void Note(int32_t code);
  /// Takes the plans to be reported now; none for a while after some were taken, since the next read may fail, too.
  std::set<int32_t> TakeDue();

 private:
  std::mutex mutex_;
  std::set<int32_t> codes_;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace TarnHost::Store
