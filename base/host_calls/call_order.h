#pragma once

#include <QThreadPool>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace HostCalls {

/// Runs tasks of one key one after the other, in the order in which they came, and those of different keys side by
/// side. Tasks that wait take no thread.
///
/// A task must not throw. Tasks that wait are run even when the order is destroyed meanwhile. Thread: any.
class CCallOrder {
 public:
  /// Whether a task of this key runs or waits.
  bool IsBusy(const std::string& key) const;
  /// The thread that runs a task of the key takes this one over; `pool` is for the first.
  void Run(QThreadPool* pool, const std::string& key, std::function<void()> task);

 private:
  /// The tasks that wait for the one of their key that runs.
  struct Waiting {
    std::mutex mutex;
    std::unordered_map<std::string, std::deque<std::function<void()>>> tasks;
  };

  static void RunAll(Waiting& waiting, const std::string& key, std::function<void()> task);

  const std::shared_ptr<Waiting> waiting_ = std::make_shared<Waiting>();
};

}  // namespace HostCalls
