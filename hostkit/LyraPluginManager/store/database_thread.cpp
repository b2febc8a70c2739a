#include "store/database_thread.h"

#include <utility>

namespace TarnHost::Store {

CDatabaseThread::CDatabaseThread() : thread_([this] { Run(); }) {}

CDatabaseThread::~CDatabaseThread() {
  Stop({});
}

void CDatabaseThread::Post(std::function<void()> task) {
  Add(std::move(task), [] {});
}

void CDatabaseThread::Add(std::function<void()> run, std::function<void()> drop) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!stopping_) {
      tasks_.push_back({std::move(run), std::move(drop)});
      wake_.notify_one();
      return;
    }
  }
  drop();
}

void CDatabaseThread::SetBeat(std::chrono::milliseconds period, std::function<void()> beat) {
  period_ = period;
  beat_ = std::move(beat);
  next_beat_ = std::chrono::steady_clock::now() + period;
}

void CDatabaseThread::Stop(std::function<void()> last) {
  std::deque<Task> dropped;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_) {
      return;
    }
    stopping_ = true;
    dropped.swap(tasks_);
    tasks_.push_back({std::move(last), {}});
    wake_.notify_one();
  }
  for (const Task& task : dropped) {
    task.drop();
  }
  thread_.join();
}

std::function<void()> CDatabaseThread::Next() {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto something = [this] { return !tasks_.empty(); };
  if (beat_) {
    wake_.wait_until(lock, next_beat_, something);
  } else {
    wake_.wait(lock, something);
  }
  // The beat comes in its time even when tasks never run out, and tasks get theirs after a beat that took long.
  if (!stopping_ && std::chrono::steady_clock::now() >= next_beat_) {
    next_beat_ = std::chrono::steady_clock::time_point::max();
    return [this] {
      beat_();
      const std::lock_guard<std::mutex> again(mutex_);
      next_beat_ = std::chrono::steady_clock::now() + period_;
    };
  }
  if (tasks_.empty()) {
    return [] {};
  }
  std::function<void()> run = std::move(tasks_.front().run);
  tasks_.pop_front();
  return run;
}

void CDatabaseThread::Run() {
  for (bool stop = false; !stop;) {
    if (const std::function<void()> run = Next()) {
      run();
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    stop = stopping_ && tasks_.empty();
  }
}

}  // namespace TarnHost::Store
