#include "app/quit_on_signal.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>

namespace TarnClient {

namespace {

// A handler may do next to nothing; it wakes the event loop through a pair of sockets.
int writing_end = -1;

void Wake(int) {
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
  QCoreApplication::quit();
}

}  // namespace TarnClient
