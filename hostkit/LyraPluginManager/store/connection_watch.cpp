#include "store/connection_watch.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace TarnHost::Store {
namespace {

constexpr std::chrono::seconds kLimit{10};

}  // namespace

CConnectionWatch::~CConnectionWatch() {
  Detach();
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    ending_ = true;
    wake_.notify_one();
  }
  if (thread_.joinable()) {
    thread_.join();
  }
}

void CConnectionWatch::Attach(int socket) {
  Detach();
  const std::lock_guard<std::mutex> lock(mutex_);
  socket_ = ::fcntl(socket, F_DUPFD_CLOEXEC, 0);
  if (closed_) {
    CutNow();
  }
  if (!thread_.joinable()) {
    thread_ = std::thread([this] { Run(); });
  }
}

void CConnectionWatch::Detach() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (socket_ >= 0) {
    ::close(std::exchange(socket_, -1));
  }
  was_cut_ = false;
}

void CConnectionWatch::Cut() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closed_ = true;
  CutNow();
}

// With the mutex held.
void CConnectionWatch::CutNow() {
  if (socket_ >= 0) {
    was_cut_ = true;
    ::shutdown(socket_, SHUT_RDWR);
  }
}

// A wait that begins while this sleeps ends no earlier than the sleep does, so no one has to wake it.
void CConnectionWatch::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!ending_) {
    const Clock::time_point now = Clock::now();
    const Clock::time_point deadline{Clock::duration(deadline_)};
    const bool waiting = deadline != Clock::time_point();
    if (waiting && deadline <= now) {
      CutNow();
      deadline_ = 0;
    }
    wake_.wait_until(lock, waiting && deadline > now ? deadline : now + kLimit, [this] { return ending_; });
  }
}

CConnectionWatch::CWait::~CWait() {
  if (watch_ != nullptr) {
    watch_->deadline_ = 0;
  }
}

void CConnectionWatch::CWait::Renew() {
  if (watch_ != nullptr) {
    watch_->deadline_ = (Clock::now() + kLimit).time_since_epoch().count();
  }
}

}  // namespace TarnHost::Store
