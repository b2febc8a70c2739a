#include "store/thread_waker.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace TarnHost::Store {
namespace {

using std::chrono::milliseconds;

constexpr int kForEver = -1;

// Rounded up: who wakes a moment too early would sleep again for no time at all, many times over.
int PauseUntil(CThreadWaker::Clock::time_point deadline) {
  if (deadline == CThreadWaker::Clock::time_point::max()) {
    return kForEver;
  }
  const auto pause = std::chrono::ceil<milliseconds>(deadline - CThreadWaker::Clock::now());
  return static_cast<int>(std::clamp<milliseconds::rep>(pause.count(), 0, std::numeric_limits<int>::max()));
}

}  // namespace

CThreadWaker::CThreadWaker() : event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (event_ < 0) {
    throw std::bad_alloc();
  }
}

CThreadWaker::~CThreadWaker() {
  ::close(event_);
}

void CThreadWaker::Wake() {
  ::eventfd_write(event_, 1);
}

bool CThreadWaker::SleepUntil(Clock::time_point deadline, int socket) {
  std::array<pollfd, 2> both{{{event_, POLLIN, 0}, {socket, POLLIN, 0}}};  // a negative one is left out
  const bool any = ::poll(both.data(), both.size(), PauseUntil(deadline)) > 0;
  if (any && both[0].revents != 0) {
    eventfd_t count = 0;
    ::eventfd_read(event_, &count);
  }
  return any && both[1].revents != 0;
}

}  // namespace TarnHost::Store
