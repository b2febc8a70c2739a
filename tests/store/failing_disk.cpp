#include "failing_disk.h"

#include <QFile>
#include <atomic>
#include <cerrno>
#include <mutex>
#include <string>

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using StoreTest::CFailingDisk;

std::mutex mutex;
std::string file;
CFailingDisk::Fault fault = CFailingDisk::kNone;
int wanted = 0;
bool is_torn = false;
std::atomic<bool> present{false};
std::atomic<int> count{0};

template <class Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool IsOfFile(int descriptor) {
  char path[4096];
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = ::readlink(link.c_str(), path, sizeof path);
  return length > 0 && std::string(path, size_t(length)).compare(0, file.size(), file) == 0;
}

enum class Verdict { kDo, kFail, kHalf };

// errno is set where the call is to fail.
Verdict Judge(int descriptor, bool is_write) {
  if (!present) {
    return Verdict::kDo;
  }
  const std::lock_guard<std::mutex> lock(mutex);
  if (!IsOfFile(descriptor)) {
    return Verdict::kDo;
  }
  const int number = ++count;
  errno = fault == CFailingDisk::kFailsOnce ? EIO : ENOSPC;
  if (std::exchange(is_torn, false)) {
    return Verdict::kFail;
  }
  if (fault == CFailingDisk::kNone || number < wanted || (number > wanted && fault != CFailingDisk::kStaysFull)) {
    return Verdict::kDo;
  }
  is_torn = fault == CFailingDisk::kTornOnce && is_write;
  return is_torn ? Verdict::kHalf : Verdict::kFail;
}

template <class Call>
ssize_t Write(int descriptor, size_t size, Call call) {
  switch (Judge(descriptor, true)) {
    case Verdict::kDo:
      break;
    case Verdict::kFail:
      return -1;
    case Verdict::kHalf:
      return call(size / 2);
  }
  return call(size);
}

template <class Call>
int Sync(int descriptor, Call call) {
  return Judge(descriptor, false) == Verdict::kDo ? call() : -1;
}

}  // namespace

// In place of the system's own, for the libraries, too.
#pragma GCC visibility push(default)
extern "C" {

ssize_t pwrite64(int descriptor, const void* bytes, size_t size, off64_t place) {
  static const auto real = Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
  return Write(descriptor, size, [&](size_t part) { return real(descriptor, bytes, part, place); });
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t place) {
  return pwrite64(descriptor, bytes, size, place);
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
  static const auto real = Real<ssize_t(int, const void*, size_t)>("write");
  return Write(descriptor, size, [&](size_t part) { return real(descriptor, bytes, part); });
}

int fsync(int descriptor) {
  static const auto real = Real<int(int)>("fsync");
  return Sync(descriptor, [&] { return real(descriptor); });
}

int fdatasync(int descriptor) {
  static const auto real = Real<int(int)>("fdatasync");
  return Sync(descriptor, [&] { return real(descriptor); });
}

int ftruncate64(int descriptor, off64_t size) noexcept {
  static const auto real = Real<int(int, off64_t)>("ftruncate64");
  return Sync(descriptor, [&] { return real(descriptor, size); });
}

}  // extern "C"
#pragma GCC visibility pop

namespace StoreTest {

CFailingDisk::CFailingDisk(const QString& path, Fault what, int number) {
  const std::lock_guard<std::mutex> lock(mutex);
  file = QFile::encodeName(path).toStdString();
  fault = what;
  wanted = number;
  is_torn = false;
  count = 0;
  present = true;
}

CFailingDisk::~CFailingDisk() {
  const std::lock_guard<std::mutex> lock(mutex);
  present = false;
}

int CFailingDisk::Count() {
  return count;
}

}  // namespace StoreTest
