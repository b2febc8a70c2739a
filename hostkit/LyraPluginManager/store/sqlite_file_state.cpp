#include "store/sqlite_file_state.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TarnHost::Store {
namespace {

qint64 NanosecondsOf(const timespec& time) {
  return time.tv_sec * qint64{1000000000} + time.tv_nsec;
}

// Closing any other handle of a file would take this process's locks on it.
std::shared_ptr<const int> PinOf(const QByteArray& name) {
  const int descriptor = ::open(name.constData(), O_PATH | O_CLOEXEC);
  if (descriptor < 0) {
    return nullptr;
  }
  return {new int(descriptor), [](const int* held) {
            ::close(*held);
            delete held;
          }};
}

SqliteFileState::Entry EntryOf(const QString& name) {
  SqliteFileState::Entry entry;
  struct stat status {};
  const QByteArray path = QFile::encodeName(name);
  entry.pin = PinOf(path);
  // Where no more files can be opened the name alone says what stands there.
  if ((entry.pin ? ::fstat(*entry.pin, &status) : ::stat(path.constData(), &status)) == 0) {
    entry.device = status.st_dev;
    entry.inode = status.st_ino;
    entry.size = status.st_size;
    entry.modified_ns = NanosecondsOf(status.st_mtim);
    entry.changed_ns = NanosecondsOf(status.st_ctim);
  }
  return entry;
}

// Mode bits count even for a user whom they do not bind: a file that was made read-only is meant to stay as it is.
bool IsWritable(const QString& path) {
  struct stat status {};
  const QByteArray name = QFile::encodeName(path);
  return ::stat(name.constData(), &status) == 0 && (status.st_mode & 0222) != 0 &&
         ::access(name.constData(), W_OK) == 0;
}

}  // namespace

SqliteFileState SqliteFileState::Of(const QString& file) {
  return {EntryOf(file), EntryOf(file + "-wal")};
}

bool IsWritableFile(const QString& file) {
  return IsWritable(file);
}

bool IsInWritableFolder(const QString& file) {
  return IsWritable(QFileInfo(file).absolutePath());
}

}  // namespace TarnHost::Store
