#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

#include "store/store_error.h"

namespace TarnHost::Store {

/// The one thread that touches the database: runs tasks in their order and, every now and then, a beat.
class CDatabaseThread {
 public:
  CDatabaseThread();
  ~CDatabaseThread();

  /// Runs `task` on the thread and waits for it; pumps no events. What it throws comes back here; once the thread
  /// stops, CStoreError. Thread: any but this one.
  template <class Task>
  auto Call(Task task) -> decltype(task()) {
    // Shared: the thread may still be leaving the task when the answer is here.
    const auto packaged = std::make_shared<std::packaged_task<decltype(task())()>>(std::move(task));
    auto result = packaged->get_future();
    Add([packaged] { (*packaged)(); }, [packaged] { *packaged = {}; });
    return Await(result);
  }

  /// Runs `task` some time later. Dropped when the thread stops. Thread: any.
  void Post(std::function<void()> task);

  /// Runs `beat` every `period` from now on, whatever else there is to do. Thread: this one's tasks.
  void SetBeat(std::chrono::milliseconds period, std::function<void()> beat);

  /// Ends after the running task: waiting calls fail, `last` runs as the thread's last act. Once only.
  void Stop(std::function<void()> last);

 private:
  struct Task {
    std::function<void()> run, drop;
  };

  template <class Result>
  static Result Await(std::future<Result>& result) {
    try {
      return result.get();
    } catch (const std::future_error&) {
      throw CStoreError("The plan store has been closed.");
    }
  }

  void Add(std::function<void()> run, std::function<void()> drop);
  void Run();
  std::function<void()> Next();

  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<Task> tasks_;
  bool stopping_ = false;
  std::chrono::milliseconds period_{0};
  std::function<void()> beat_;
  std::chrono::steady_clock::time_point next_beat_ = std::chrono::steady_clock::time_point::max();
  std::thread thread_;
};

}  // namespace TarnHost::Store
