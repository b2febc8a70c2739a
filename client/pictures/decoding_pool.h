#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace TarnClient {

class CDecodingPool;

/// Work that comes bit by bit and is done in order, by one thread at a time.
class CDecodingTask {
 public:
  virtual ~CDecodingTask() = default;

 protected:
  /// Does one bit; whether there is more to do.
  virtual bool Work() = 0;

 private:
  friend class CDecodingPool;

  enum class Turn { Idle, Waiting, Running, RunningAgain };
  Turn turn_ = Turn::Idle;  // under the pool's lock
};

/// A few threads that share the work of many tasks, turn by turn. Thread: any.
class CDecodingPool {
 public:
  explicit CDecodingPool(int threads);
  /// What waits is not done any more.
  ~CDecodingPool();
  CDecodingPool(const CDecodingPool&) = delete;
  CDecodingPool& operator=(const CDecodingPool&) = delete;

  /// There is something to do for it. It is kept until that is done.
  void Schedule(const std::shared_ptr<CDecodingTask>& task);
  /// The part of the threads' time that they worked since the last call.
  double TakeLoad();
  int Threads() const { return static_cast<int>(threads_.size()); }

  /// As many as there are cores, and two at least, or one slow picture holds up all cameras.
  static int UsualThreads();

 private:
  using Clock = std::chrono::steady_clock;

  void Run();
  void FinishTurn(const std::shared_ptr<CDecodingTask>& task, bool has_more);

  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::shared_ptr<CDecodingTask>> waiting_;
  bool ends_ = false;
  std::atomic<Clock::rep> busy_{0};
  Clock::time_point load_since_ = Clock::now();
  std::vector<std::thread> threads_;
};

}  // namespace TarnClient
