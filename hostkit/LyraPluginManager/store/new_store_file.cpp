#include "store/new_store_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "store/store_error.h"

namespace TarnHost::Store {
namespace {

constexpr qint64 kLongestMaking = 10 * 60;  // seconds; an older program holds nothing while it makes a store
const char* const kCompanions[] = {"-wal", "-shm", "-journal"};

// Not every file system knows links, nor every one the other way.
bool Move(const QByteArray& from, const QByteArray& to) {
  return ::link(from.constData(), to.constData()) == 0 ||
         (errno != EEXIST && ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0);
}

void SyncFolderOf(const QString& file) {
  const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
  const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    ::fsync(descriptor);
    ::close(descriptor);
  }
}

// The file goes last: what stands beside it is found through it.
void RemoveWithCompanions(const QString& path) {
  for (const char* suffix : kCompanions) {
    QFile::remove(path + suffix);
  }
  QFile::remove(path);
}

bool IsOld(const QFileInfo& file) {
  return file.lastModified().secsTo(QDateTime::currentDateTime()) > kLongestMaking;
}

bool IsHeld(const QString& path) {
  const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  const bool held = descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
  if (descriptor >= 0) {
    ::close(descriptor);
  }
  return held;
}

}  // namespace

CNewStoreFile::CNewStoreFile(const QString& target)
    : target_(target), path_(target + ".new-" + QUuid::createUuid().toString(QUuid::Id128)) {
  held_ = ::open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (held_ < 0) {
    throw CStoreError(CStoreError::kFailed, QStringLiteral("The plan store %1 cannot be made: %2")
                                                .arg(target, QString::fromLocal8Bit(std::strerror(errno))));
  }
  ::flock(held_, LOCK_EX | LOCK_NB);
}

CNewStoreFile::~CNewStoreFile() {
  RemoveWithCompanions(path_);
  ::close(held_);
}

bool CNewStoreFile::Publish() const {
  ::fsync(held_);
  if (!Move(QFile::encodeName(path_), QFile::encodeName(target_))) {
    if (errno == EEXIST) {
      return false;
    }
    throw CStoreError(CStoreError::kFailed, QStringLiteral("The plan store %1 cannot be made: %2")
                                                .arg(target_, QString::fromLocal8Bit(std::strerror(errno))));
  }
  SyncFolderOf(target_);
  return true;
}

void CNewStoreFile::Replace() const {
  if (::fsync(held_) != 0 || ::rename(QFile::encodeName(path_).constData(), QFile::encodeName(target_)) != 0) {
    throw CStoreError(
        CStoreError::kFailed,
        QStringLiteral("The file %1 cannot be made: %2").arg(target_, QString::fromLocal8Bit(std::strerror(errno))));
  }
  SyncFolderOf(target_);
}

void CNewStoreFile::RemoveLeftOvers(const QString& target) {
  const QFileInfo store(target);
  const QRegularExpression form("^" + QRegularExpression::escape(store.fileName()) +
                                "\\.new-[0-9a-f]{32}(-wal|-shm|-journal)?$");
  for (const QFileInfo& file : store.absoluteDir().entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks)) {
    const QRegularExpressionMatch match = form.match(file.fileName());
    if (!match.hasMatch() || !IsOld(file)) {
      continue;
    }
    const QString path = file.absoluteFilePath();
    const QString whole = path.left(path.size() - match.capturedLength(1));
    if (QFile::exists(whole) ? IsOld(QFileInfo(whole)) && !IsHeld(whole) : match.capturedLength(1) > 0) {
      RemoveWithCompanions(whole);
    }
  }
}

}  // namespace TarnHost::Store
