#include "store/connection_watch.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace TarnHost::Store {
namespace {

// A desk that is idle asks for a sign of life twice a second, so its user knows of a silence within two seconds.
constexpr std::chrono::milliseconds kSilence{1200};
constexpr std::chrono::seconds kLimit{10};

}  // namespace

/// What the watch and its thread share: who is called for a silence may be the last to let go of the watch.
class CConnectionWatch::CLook {
 public:
  void Run();
  void End();
  void Attach(int socket);
  void Detach();
  void Cut();
  void SetBegin(Clock::time_point begin) { begin_ = begin.time_since_epoch().count(); }

  std::atomic<bool> was_cut{false};
  std::function<void()> on_silence;

 private:
  Clock::time_point Begin() const { return Clock::time_point(Clock::duration(begin_)); }
  bool FindsSilence();
  Clock::time_point CutOrWait();
  void CutNow();

  std::atomic<Clock::rep> begin_{0};  // of the present wait; 0 when there is none
  Clock::time_point reported_;        // the wait that was reported as silence
  std::mutex mutex_;
  std::condition_variable wake_;
  int socket_ = -1;  // a handle of our own: its number is not given to others while we look at it
  bool closed_ = false, ending_ = false;
};

void CConnectionWatch::CLook::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!ending_) {
    if (FindsSilence()) {
      lock.unlock();
      on_silence();
      lock.lock();
    }
    wake_.wait_until(lock, CutOrWait(), [this] { return ending_; });
  }
}

// With the mutex held, as what follows.
bool CConnectionWatch::CLook::FindsSilence() {
  const Clock::time_point begin = Begin();
  const bool is_silent = begin != Clock::time_point() && begin + kSilence <= Clock::now();
  return is_silent && begin != std::exchange(reported_, begin) && on_silence;
}

// A wait that begins while the thread sleeps becomes a silence no earlier than the sleep ends, so no one wakes it.
CConnectionWatch::Clock::time_point CConnectionWatch::CLook::CutOrWait() {
  const Clock::time_point begin = Begin(), now = Clock::now();
  if (begin == Clock::time_point()) {
    return now + kSilence;
  }
  if (begin + kSilence > now) {
    return begin + kSilence;
  }
  if (begin + kLimit <= now) {
    CutNow();
    begin_ = 0;
  }
  return std::min(now + kSilence, std::max(begin + kLimit, now));
}

void CConnectionWatch::CLook::CutNow() {
  if (socket_ >= 0) {
    was_cut = true;
    ::shutdown(socket_, SHUT_RDWR);
  }
}

void CConnectionWatch::CLook::End() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ending_ = true;
  wake_.notify_one();
}

void CConnectionWatch::CLook::Attach(int socket) {
  const std::lock_guard<std::mutex> lock(mutex_);
  socket_ = ::fcntl(socket, F_DUPFD_CLOEXEC, 0);
  if (closed_) {
    CutNow();
  }
}

void CConnectionWatch::CLook::Detach() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (socket_ >= 0) {
    ::close(std::exchange(socket_, -1));
  }
  was_cut = false;
}

void CConnectionWatch::CLook::Cut() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closed_ = true;
  CutNow();
}

CConnectionWatch::CConnectionWatch() : look_(std::make_shared<CLook>()) {}

CConnectionWatch::~CConnectionWatch() {
  Detach();
  look_->End();
  if (thread_.get_id() == std::this_thread::get_id()) {
    thread_.detach();
  } else if (thread_.joinable()) {
    thread_.join();
  }
}

void CConnectionWatch::SetOnSilence(std::function<void()> on_silence) {
  look_->on_silence = std::move(on_silence);
}

void CConnectionWatch::Attach(int socket) {
  Detach();
  look_->Attach(socket);
  if (!thread_.joinable()) {
    thread_ = std::thread([look = look_] { look->Run(); });
  }
}

void CConnectionWatch::Detach() {
  look_->Detach();
}

void CConnectionWatch::Cut() {
  look_->Cut();
}

bool CConnectionWatch::WasCut() const {
  return look_->was_cut;
}

CConnectionWatch::CWait::~CWait() {
  if (watch_ != nullptr) {
    watch_->look_->SetBegin({});
  }
}

void CConnectionWatch::CWait::Renew() {
  if (watch_ != nullptr) {
    watch_->look_->SetBegin(Clock::now());
  }
}

}  // namespace TarnHost::Store
