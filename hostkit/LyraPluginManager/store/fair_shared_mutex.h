#pragma once

#include <mutex>
#include <shared_mutex>

namespace TarnHost::Store {

/// A shared mutex under which a writer waits for the readers that are in, not for those that come after it. The
/// system's own lets readers in as long as one of them is there, so busy readers could keep a writer out for good.
class CFairSharedMutex {
 public:
  void lock() {
    gate_.lock();
    mutex_.lock();
  }
  void unlock() {
    mutex_.unlock();
    gate_.unlock();
  }
  void lock_shared() {
    const std::lock_guard<std::mutex> gate(gate_);
    mutex_.lock_shared();
  }
  void unlock_shared() { mutex_.unlock_shared(); }

 private:
  std::mutex gate_;
  std::shared_mutex mutex_;
};

}  // namespace TarnHost::Store
