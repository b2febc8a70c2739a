#pragma once

#include <memory>
#include <mutex>

namespace Wren::Base {

/// One instance of T a process, made on first use.
///
/// Thread: Instance() may be called from any thread. The mutex is not recursive, so no constructor of a T may reach
/// its own Instance(). The template has default visibility: with hidden visibility every shared object would get an
/// instance of its own.
template <class T>
class __attribute__((visibility("default"))) CSingleton {
 public:
  /// The instance, made when there is none. Those of widgets and timers are made on the GUI thread.
  static T& Instance() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!instance_) {
      instance_.reset(new T);
    }
    return *instance_;
  }

  /// Whether the instance stands; makes none.
  static bool IsCreated() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return instance_ != nullptr;
  }

  /// Destroys the instance (nothing when there is none); the next Instance() makes a new one. Part of an orderly
  /// shut-down: the instance must not be in use any more.
  static void Release() {
    std::unique_ptr<T> last;
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      last.swap(instance_);
    }
  }

 protected:
  CSingleton() = default;
  ~CSingleton() = default;
  CSingleton(const CSingleton&) = delete;
  CSingleton& operator=(const CSingleton&) = delete;

 private:
  inline static std::unique_ptr<T> instance_;
  inline static std::mutex mutex_;
};

}  // namespace Wren::Base
