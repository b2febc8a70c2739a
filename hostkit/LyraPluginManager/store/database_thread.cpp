#include "store/database_thread.h"

#include <QCoreApplication>
#include <QThread>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "store/database_call.h"
#include "store/store_texts.h"
#include "store/thread_waker.h"

namespace TarnHost::Store {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kGuiPatience{1900}, kShortGuiPatience{100}, kPatience{10000};

bool IsGuiThread() {
  const QCoreApplication* application = QCoreApplication::instance();
  return application != nullptr && application->thread() == QThread::currentThread();
}

milliseconds LimitOf(CDatabaseThread::Patience patience, bool on_gui) {
  if (patience == CDatabaseThread::kUntilDone) {
    return std::chrono::hours(24);
  }
  if (!on_gui) {
    return kPatience;
  }
  return patience == CDatabaseThread::kShort ? kShortGuiPatience : kGuiPatience;
}

}  // namespace

/// What thread and owner share, so that either may outlive the other.
class CDatabaseThread::CLoop {
 public:
  explicit CLoop(std::shared_ptr<CAnswering> answering) : answering_(std::move(answering)) {}

  void Run();
  void Add(const std::shared_ptr<CDatabaseCall>& call);
  void SetBeat(milliseconds period, Beat beat, std::function<Rest()> before_rest);
  void Stop(std::function<void()> last);
  bool WaitUntilEnded(Clock::time_point deadline);
  std::shared_ptr<CDatabaseCall> Running() const;
  void MarkStuck();
  bool MarkAnswering();
  void MarkBehind();
  bool IsBehind() const;

 private:
  bool HasWork(Clock::time_point* next) const;
  void RestUntilThereIsWork();
  void BeatNow();
  std::shared_ptr<CDatabaseCall> Next();
  bool OnRun(bool answered);

  const std::shared_ptr<CAnswering> answering_;
  mutable std::mutex mutex_;
  std::condition_variable end_;
  CThreadWaker waker_;
  std::deque<std::shared_ptr<CDatabaseCall>> calls_;
  std::shared_ptr<CDatabaseCall> running_;
  bool stopping_ = false, ended_ = false, stuck_ = false;
  bool is_behind_ = false;  // a short call was abandoned, and nothing was done since
  milliseconds period_{0};
  Beat beat_;
  std::function<Rest()> before_rest_;
  Clock::time_point next_beat_ = Clock::time_point::max();
};

void CDatabaseThread::CLoop::Add(const std::shared_ptr<CDatabaseCall>& call) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!stopping_) {
      calls_.push_back(call);
      waker_.Wake();
      return;
    }
  }
  call->Drop();
}

void CDatabaseThread::CLoop::SetBeat(milliseconds period, Beat beat, std::function<Rest()> before_rest) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!stopping_) {
    period_ = period;
    beat_ = std::move(beat);
    before_rest_ = std::move(before_rest);
    next_beat_ = Clock::now() + period;
    waker_.Wake();
  }
}

void CDatabaseThread::CLoop::Stop(std::function<void()> last) {
  std::deque<std::shared_ptr<CDatabaseCall>> dropped;
  Beat beat;  // dies outside the lock, as do the calls
  std::function<Rest()> before_rest;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_) {
      return;
    }
    stopping_ = true;
    beat.swap(beat_);
    next_beat_ = Clock::time_point::max();
    before_rest.swap(before_rest_);
    dropped.swap(calls_);
    calls_.push_back(std::make_shared<CDatabaseCall>([last = std::move(last)] {
      last();
      return false;
    }));
    waker_.Wake();
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
    waker_.Wake();
  }
  answering_->PassOn();
}

// Whether that is news.
bool CDatabaseThread::CLoop::MarkAnswering() {
  const std::lock_guard<std::mutex> lock(mutex_);
  const bool again = std::exchange(stuck_, false);
  if (again) {
    answering_->OnAnswered();
  }
  return again;
}

void CDatabaseThread::CLoop::MarkBehind() {
  const std::lock_guard<std::mutex> lock(mutex_);
  is_behind_ = running_ || !calls_.empty();
}

bool CDatabaseThread::CLoop::IsBehind() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return is_behind_;
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

// With the mutex held; else when there will be.
bool CDatabaseThread::CLoop::HasWork(Clock::time_point* next) const {
  *next = next_beat_;
  return !calls_.empty() || *next <= Clock::now();
}

void CDatabaseThread::CLoop::RestUntilThereIsWork() {
  for (;;) {
    Clock::time_point next;
    std::function<Rest()> before_rest;
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      if (HasWork(&next)) {
        return;
      }
      before_rest = before_rest_;
    }
    Rest rest;
    if (before_rest) {
      rest = before_rest();
    }
    if (rest.has_news || waker_.SleepUntil(next, rest.socket)) {
      BeatNow();
    }
  }
}

void CDatabaseThread::CLoop::BeatNow() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (beat_) {
    next_beat_ = Clock::now();
  }
}

std::shared_ptr<CDatabaseCall> CDatabaseThread::CLoop::Next() {
  RestUntilThereIsWork();
  const std::lock_guard<std::mutex> lock(mutex_);
  // The beat comes in its time even when tasks never run out, and tasks get theirs after a beat that took long.
  if (Clock::now() >= next_beat_) {
    next_beat_ = Clock::time_point::max();
    running_ = std::make_shared<CDatabaseCall>([beat = beat_, stuck = stuck_] { return beat(stuck); });
  } else if (!calls_.empty()) {
    running_ = std::move(calls_.front());
    calls_.pop_front();
  }
  return running_;
}

// Answers whether it was the thread's last act.
bool CDatabaseThread::CLoop::OnRun(bool answered) {
  const bool again = answered && MarkAnswering();
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    running_.reset();
    is_behind_ = false;
    if (beat_ && next_beat_ == Clock::time_point::max()) {
      next_beat_ = Clock::now() + period_;
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
  if (on_gui && patience != kUntilDone && answering_->IsLost()) {
    throw answering_->Refusal();
  }
  const bool is_short = on_gui && patience == kShort;
  if (is_short && loop_->IsBehind()) {  // several in a row would add up
    throw CStoreError::NotAnswering();
  }
  const auto call = std::make_shared<CDatabaseCall>(std::move(work));
  loop_->Add(call);
  switch (call->Await(LimitOf(patience, on_gui))) {
    case CDatabaseCall::kDone:
      return;
    case CDatabaseCall::kAbandoned:
      if (is_short) {  // so short a wait proves nothing
        loop_->MarkBehind();
      } else {
        loop_->MarkStuck();
      }
      throw CStoreError::NotAnswering();
    case CDatabaseCall::kDropped:
      throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

void CDatabaseThread::Post(std::function<bool()> task) {
  loop_->Add(std::make_shared<CDatabaseCall>(std::move(task)));
}

void CDatabaseThread::SetBeat(milliseconds period, Beat beat, std::function<Rest()> before_rest) {
  loop_->SetBeat(period, std::move(beat), std::move(before_rest));
}

void CDatabaseThread::MarkStuck() {
  loop_->MarkStuck();
}

void CDatabaseThread::MarkAnswering() {
  loop_->MarkAnswering();
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
