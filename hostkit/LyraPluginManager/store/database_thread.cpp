#include "store/database_thread.h"

#include <QCoreApplication>
#include <QThread>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "store/database_call.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kGuiPatience{2000}, kPatience{10000};

bool IsGuiThread() {
  const QCoreApplication* application = QCoreApplication::instance();
  return application != nullptr && application->thread() == QThread::currentThread();
}

}  // namespace

/// What thread and owner share, so that either may outlive the other.
class CDatabaseThread::CLoop {
 public:
  explicit CLoop(std::shared_ptr<CAnswering> answering) : answering_(std::move(answering)) {}

  void Run();
  void Add(const std::shared_ptr<CDatabaseCall>& call);
  void SetBeat(milliseconds period, std::function<bool()> beat, When when);
  void Stop(std::function<void()> last);
  bool WaitUntilEnded(Clock::time_point deadline);
  std::shared_ptr<CDatabaseCall> Running() const;
  void MarkStuck();

 private:
  bool HasBeat() const { return beat_ && (stuck_ || when_ == kAlways); }
  std::shared_ptr<CDatabaseCall> Next();
  bool OnRun(bool answered);

  const std::shared_ptr<CAnswering> answering_;
  mutable std::mutex mutex_;
  std::condition_variable wake_, end_;
  std::deque<std::shared_ptr<CDatabaseCall>> calls_;
  std::shared_ptr<CDatabaseCall> running_;
  bool stopping_ = false, ended_ = false, stuck_ = false;
  milliseconds period_{0};
  std::function<bool()> beat_;
  When when_ = kAlways;
  Clock::time_point next_beat_ = Clock::time_point::max();
};

void CDatabaseThread::CLoop::Add(const std::shared_ptr<CDatabaseCall>& call) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!stopping_) {
      calls_.push_back(call);
      wake_.notify_one();
      return;
    }
  }
  call->Drop();
}

void CDatabaseThread::CLoop::SetBeat(milliseconds period, std::function<bool()> beat, When when) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!stopping_) {
    period_ = period;
    beat_ = std::move(beat);
    when_ = when;
    next_beat_ = Clock::now() + period;
    wake_.notify_one();
  }
}

void CDatabaseThread::CLoop::Stop(std::function<void()> last) {
  std::deque<std::shared_ptr<CDatabaseCall>> dropped;
  std::function<bool()> beat;  // dies outside the lock, as do the calls
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_) {
      return;
    }
    stopping_ = true;
    beat.swap(beat_);
    dropped.swap(calls_);
    calls_.push_back(std::make_shared<CDatabaseCall>([last = std::move(last)] {
      last();
      return false;
    }));
    wake_.notify_one();
  }
  for (const auto& call : dropped) {
    call->Drop();
  }
}

bool CDatabaseThread::CLoop::WaitUntilEnded(Clock::time_point deadline) {
  std::unique_lock<std::mutex> lock(mutex_);
  return end_.wait_until(lock, deadline, [this] { return ended_; });
}

std::shared_ptr<CDatabaseCall> CDatabaseThread::CLoop::Running() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return running_;
}

void CDatabaseThread::CLoop::MarkStuck() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (std::exchange(stuck_, true)) {
      return;
    }
    answering_->OnStuck();
    wake_.notify_one();
  }
  answering_->PassOn();
}

void CDatabaseThread::CLoop::Run() {
  for (bool ended = false; !ended;) {
    bool answered = false;
    if (const std::shared_ptr<CDatabaseCall> call = Next()) {
      answered = call->Run();
    }
    ended = OnRun(answered);
  }
}

std::shared_ptr<CDatabaseCall> CDatabaseThread::CLoop::Next() {
  std::unique_lock<std::mutex> lock(mutex_);
  wake_.wait(lock, [this] { return !calls_.empty() || HasBeat(); });
  if (HasBeat()) {
    wake_.wait_until(lock, next_beat_, [this] { return !calls_.empty(); });
  }
  // The beat comes in its time even when tasks never run out, and tasks get theirs after a beat that took long.
  if (HasBeat() && Clock::now() >= next_beat_) {
    next_beat_ = Clock::time_point::max();
    running_ = std::make_shared<CDatabaseCall>(beat_);
  } else if (!calls_.empty()) {
    running_ = std::move(calls_.front());
    calls_.pop_front();
  }
  return running_;
}

// Answers whether it was the thread's last act.
bool CDatabaseThread::CLoop::OnRun(bool answered) {
  bool again = false;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    running_.reset();
    if (next_beat_ == Clock::time_point::max()) {
      next_beat_ = Clock::now() + period_;
    }
    again = answered && std::exchange(stuck_, false);
    if (again) {
      answering_->OnAnswered();
    }
    ended_ = stopping_ && calls_.empty();
    if (ended_) {
      end_.notify_all();
      return true;
    }
  }
  if (again) {
    answering_->PassOn();
  }
  return false;
}

CDatabaseThread::CDatabaseThread(std::shared_ptr<CAnswering> answering)
    : answering_(answering),
      loop_(std::make_shared<CLoop>(std::move(answering))),
      thread_([loop = loop_] { loop->Run(); }) {}

CDatabaseThread::~CDatabaseThread() {
  loop_->Stop([] {});
  if (thread_.get_id() == std::this_thread::get_id()) {
    thread_.detach();
  } else if (thread_.joinable()) {
    thread_.join();
  }
}

void CDatabaseThread::Perform(std::function<bool()> work, Patience patience) {
  const bool on_gui = IsGuiThread();
  if (on_gui && patience == kBounded && answering_->IsLost()) {
    throw CStoreError::NotAnswering();
  }
  milliseconds limit = on_gui ? kGuiPatience : kPatience;
  if (patience == kUntilDone) {
    limit = std::chrono::hours(24);
  }
  const auto call = std::make_shared<CDatabaseCall>(std::move(work));
  loop_->Add(call);
  switch (call->Await(limit)) {
    case CDatabaseCall::kDone:
      return;
    case CDatabaseCall::kAbandoned:
      loop_->MarkStuck();
      throw CStoreError::NotAnswering();
    case CDatabaseCall::kDropped:
      throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

void CDatabaseThread::Post(std::function<bool()> task) {
  loop_->Add(std::make_shared<CDatabaseCall>(std::move(task)));
}

void CDatabaseThread::SetBeat(milliseconds period, std::function<bool()> beat, When when) {
  loop_->SetBeat(period, std::move(beat), when);
}

bool CDatabaseThread::Claim() {
  return loop_->Running()->Claim();
}

void CDatabaseThread::BeginStop(std::function<void()> last) {
  loop_->Stop(std::move(last));
}

bool CDatabaseThread::WaitUntilEnded(Clock::time_point deadline) {
  if (!loop_->WaitUntilEnded(deadline)) {
    return false;
  }
  if (thread_.joinable()) {
    thread_.join();
  }
  return true;
}

void CDatabaseThread::LeaveBehind() {
  if (const auto running = loop_->Running()) {
    running->Drop();
  }
  if (thread_.joinable()) {
    thread_.detach();
  }
}

}  // namespace TarnHost::Store
