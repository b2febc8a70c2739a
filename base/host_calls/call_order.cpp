#include "host_calls/call_order.h"

#include <utility>

namespace HostCalls {

bool CCallOrder::IsBusy(const std::string& key) const {
  const std::lock_guard<std::mutex> lock(waiting_->mutex);
  return waiting_->tasks.count(key) > 0;
}

void CCallOrder::Run(QThreadPool* pool, const std::string& key, std::function<void()> task) {
  {
    const std::lock_guard<std::mutex> lock(waiting_->mutex);
    const auto running = waiting_->tasks.find(key);
    if (running != waiting_->tasks.end()) {
      running->second.push_back(std::move(task));
      return;
    }
    waiting_->tasks[key];
  }
  pool->start([waiting = waiting_, key, task = std::move(task)] { RunAll(*waiting, key, task); });
}

void CCallOrder::RunAll(Waiting& waiting, const std::string& key, std::function<void()> task) {
  while (task) {
    task();
    const std::lock_guard<std::mutex> lock(waiting.mutex);
    auto& next = waiting.tasks[key];
    if (next.empty()) {
      waiting.tasks.erase(key);
      return;
    }
    task = std::move(next.front());
    next.pop_front();
  }
}

}  // namespace HostCalls
