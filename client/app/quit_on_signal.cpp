#include "app/quit_on_signal.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <atomic>
#include <csignal>
#include <ctime>

namespace TarnClient {

namespace {

// What follows within this time is the same request: shells and tools send it to the process and to its group.
constexpr long long kSameRequestNs = 100'000'000;
constexpr int kKilledBySignal = 128;

// A handler may do next to nothing; it wakes the event loop through a pair of sockets.
int writing_end = -1;
std::atomic<long long> first_request{0};  // monotonic time; 0 before the first
static_assert(std::atomic<long long>::is_always_lock_free, "A handler must not wait for a lock.");

long long Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

// The event loop may never turn again, so the second request does not go through it.
void EndIfAskedBefore(int number) {
  long long first = 0;
  const long long now = Now();
  if (!first_request.compare_exchange_strong(first, now) && number != SIGHUP && now - first > kSameRequestNs) {
    ::_exit(kKilledBySignal + number);
  }
}

void Wake(int number) {
  EndIfAskedBefore(number);
  const char any = 1;
  const ssize_t written = ::write(writing_end, &any, sizeof(any));
  static_cast<void>(written);
}

void Handle(void (*handler)(int)) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
  }
}

}  // namespace

CQuitOnSignal::CQuitOnSignal(QObject* parent) : QObject(parent) {
  int ends[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    return;  // the system's way of ending programs stays
  }
  writing_end = ends[0];
  reading_end_ = ends[1];
  auto* notifier = new QSocketNotifier(reading_end_, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, &CQuitOnSignal::OnSignal);
  Handle(&Wake);
}

CQuitOnSignal::~CQuitOnSignal() {
  if (reading_end_ < 0) {
    return;
  }
  Handle(SIG_DFL);
  ::close(writing_end);
  ::close(reading_end_);
}

void CQuitOnSignal::OnSignal() {
  char any = 0;
  const ssize_t taken = ::read(reading_end_, &any, sizeof(any));
  static_cast<void>(taken);
  QCoreApplication::exit();  // quit() would close the windows first on Qt 6, and one that asks would stop it
}

}  // namespace TarnClient
