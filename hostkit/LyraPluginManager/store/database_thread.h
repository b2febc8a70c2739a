#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

#include "store/answering.h"
#include "store/store_error.h"

namespace TarnHost::Store {

class CDatabaseCall;

/// A thread of its own for a database: runs tasks in their order and, every now and then, a beat.
///
/// A database may hang, so no one waits for the thread without a limit. What it runs may outlive its callers and this
/// object: tasks and beats hold what they use by value or shared.
class CDatabaseThread {
 public:
  using Clock = std::chrono::steady_clock;
  /// How long a caller waits. On the GUI thread 2 s, 100 ms for a short read, and not at all after one that was not
  /// answered in that time until something is; on any other 10 s.
  enum Patience { kBounded, kShort, kUntilDone };
  /// What a thread that has nothing to do waits for besides its tasks and the time of its beat.
  struct Rest {
    int socket = -1;        // the beat comes when there is something to read from it
    bool has_news = false;  // the beat comes at once
  };

  /// `answering` learns when the thread keeps a caller waiting too long, and when it gets something done after that.
  explicit CDatabaseThread(std::shared_ptr<CAnswering> answering);
  ~CDatabaseThread();

  /// Runs `task` on the thread and waits for it, pumping no events; on the GUI thread not at all while the store does
  /// not answer. What the task throws comes back here; CStoreError when its end was not awaited or the thread stops.
  /// Thread: any but this one.
  template <class Task>
  auto Call(Task task, Patience patience = kBounded) -> decltype(task()) {
    const auto answer = std::make_shared<std::promise<decltype(task())>>();
    auto result = answer->get_future();
    Perform([answer, task = std::move(task)]() mutable { return Fulfil(answer.get(), task); }, patience);
    return result.get();
  }

  /// Runs `task` some time later; it answers whether the database did. Dropped when the thread stops. Thread: any.
  void Post(std::function<bool()> task);

  /// Answers whether the database did. `is_stuck`: it kept somebody waiting, and nothing was got done since.
  using Beat = std::function<bool(bool is_stuck)>;
  /// Runs `beat` every `period` from now on, whatever else there is to do. `before_rest` is asked on the thread
  /// whenever there is nothing to do.
  void SetBeat(std::chrono::milliseconds period, Beat beat, std::function<Rest()> before_rest = {});

  /// The database keeps the running task waiting, or has just answered; else that shows at the end of a task. Thread:
  /// any.
  void MarkStuck();
  void MarkAnswering();

  /// Whether a caller waits for the running task; if so it waits for the end from here on. Thread: this one's tasks.
  bool Claim();

  /// Ends after the running task: calls that wait for their turn fail, `last` runs as the thread's last act. Once.
  void BeginStop(std::function<void()> last);
  /// After BeginStop(): whether the thread has ended, at the latest at `deadline`.
  bool WaitUntilEnded(Clock::time_point deadline);
  /// After BeginStop(): lets the thread end by itself some time later; a caller that waits for the running task fails.
  void LeaveBehind();

 private:
  class CLoop;

  template <class Result, class Task>
  static bool Fulfil(std::promise<Result>* answer, Task& task) {
    try {
      if constexpr (std::is_void_v<Result>) {
        task();
        answer->set_value();
      } else {
        answer->set_value(task());
      }
    } catch (const CStoreError& error) {
      answer->set_exception(std::current_exception());
      return !error.IsOfConnection();
    } catch (...) {
      answer->set_exception(std::current_exception());
    }
    return true;
  }

  void Perform(std::function<bool()> work, Patience patience);

  const std::shared_ptr<CAnswering> answering_;
  const std::shared_ptr<CLoop> loop_;
  std::thread thread_;
};

}  // namespace TarnHost::Store
