#include "marlog/log_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TarnHost {
namespace {

// Holds back the signal that ends a process which writes to a pipe without a reader.
class CHeldPipeSignal {
 public:
  CHeldPipeSignal() {
    sigset_t pending;
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&signal_);
    sigaddset(&signal_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signal_, &old_mask_);
  }
  ~CHeldPipeSignal() {
    const timespec at_once{};
    while (!was_pending_ && sigtimedwait(&signal_, nullptr, &at_once) < 0 && errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &old_mask_, nullptr);
  }
  CHeldPipeSignal(const CHeldPipeSignal&) = delete;
  CHeldPipeSignal& operator=(const CHeldPipeSignal&) = delete;

 private:
  sigset_t signal_{}, old_mask_{};
  bool was_pending_ = false;
};

}  // namespace

bool LogFile::Open(const QByteArray& name) {
  Close();
  name_ = name;
  return Reopen();
}

void LogFile::Close() {
  if (descriptor_ >= 0) {
    ::close(descriptor_);
    descriptor_ = -1;
  }
}

// Waits for nothing: a pipe without a reader is no place for a log, and one whose reader sleeps loses lines.
bool LogFile::Reopen() {
  constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  descriptor_ = ::open(name_.constData(), kFlags, S_IRUSR | S_IWUSR);
  struct stat status {};
  if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) {
    Close();
    return false;
  }
  rotates_ = S_ISREG(status.st_mode);
  size_ = status.st_size;
  return true;
}

void LogFile::Append(const QByteArray& line) {
  if (!rotates_) {
    const CHeldPipeSignal held;
    Write(line);
    return;
  }
  if (size_ > 0 && size_ + line.size() > kMaxBytes) {
    Rotate();
  }
  Write(line);
}

void LogFile::Write(const QByteArray& line) {
  int begin = 0;
  while (begin < line.size()) {
    const ssize_t written = ::write(descriptor_, line.constData() + begin, static_cast<size_t>(line.size() - begin));
    if (written < 0 && errno != EINTR) {
      return;
    }
    begin += static_cast<int>(std::max<ssize_t>(written, 0));
  }
  size_ += line.size();
}

void LogFile::Rotate() {
  const auto older = [this](int number) { return name_ + '.' + QByteArray::number(number); };
  Close();
  ::unlink(older(kOlderFiles).constData());
  for (int number = kOlderFiles - 1; number >= 1; --number) {
    std::rename(older(number).constData(), older(number + 1).constData());
  }
  std::rename(name_.constData(), older(1).constData());
  Reopen();
}

}  // namespace TarnHost
