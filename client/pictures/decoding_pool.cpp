#include "pictures/decoding_pool.h"

#include <algorithm>

namespace TarnClient {

using Lock = std::unique_lock<std::mutex>;

int CDecodingPool::UsualThreads() {
  return std::max(2, static_cast<int>(std::thread::hardware_concurrency()));
}

CDecodingPool::CDecodingPool(int threads) {
  for (int number = 0; number < threads; ++number) {
    threads_.emplace_back([this] { Run(); });
  }
}

CDecodingPool::~CDecodingPool() {
  {
    const Lock lock(mutex_);
    ends_ = true;
    waiting_.clear();
  }
  wake_.notify_all();
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

void CDecodingPool::Schedule(const std::shared_ptr<CDecodingTask>& task) {
  {
    const Lock lock(mutex_);
    if (task->turn_ == CDecodingTask::Turn::Running) {
      task->turn_ = CDecodingTask::Turn::RunningAgain;
    }
    if (task->turn_ != CDecodingTask::Turn::Idle || ends_) {
      return;
    }
    task->turn_ = CDecodingTask::Turn::Waiting;
    waiting_.push_back(task);
  }
  wake_.notify_one();
}

double CDecodingPool::TakeLoad() {
  const Clock::time_point now = Clock::now();
  const Lock lock(mutex_);
  const Clock::rep passed = (now - load_since_).count();
  load_since_ = now;
  const Clock::rep busy = busy_.exchange(0);
  if (passed <= 0) {
    return 0;
  }
  return static_cast<double>(busy) / (static_cast<double>(passed) * static_cast<double>(threads_.size()));
}

void CDecodingPool::Run() {
  for (;;) {
    std::shared_ptr<CDecodingTask> task;
    {
      Lock lock(mutex_);
      wake_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
      if (ends_) {
        return;
      }
      task = std::move(waiting_.front());
      waiting_.pop_front();
      task->turn_ = CDecodingTask::Turn::Running;
    }
    const Clock::time_point begin = Clock::now();
    const bool has_more = task->Work();
    busy_ += (Clock::now() - begin).count();
    FinishTurn(task, has_more);
  }
}

// At the end of the line, so that one camera with much to do does not hold up the others.
void CDecodingPool::FinishTurn(const std::shared_ptr<CDecodingTask>& task, bool has_more) {
  const Lock lock(mutex_);
  if (!ends_ && (has_more || task->turn_ == CDecodingTask::Turn::RunningAgain)) {
    task->turn_ = CDecodingTask::Turn::Waiting;
    waiting_.push_back(task);
    wake_.notify_one();
    return;
  }
  task->turn_ = CDecodingTask::Turn::Idle;
}

}  // namespace TarnClient
