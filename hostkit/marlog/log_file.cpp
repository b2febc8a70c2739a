#include "marlog/log_file.h"

#include <QDir>
#include <QFileInfo>

namespace TarnHost {

bool LogFile::Open(const QString& path) {
  Close();
  QDir().mkpath(QFileInfo(path).absolutePath());
  file_.setFileName(path);
  return Reopen();
}

bool LogFile::Reopen() {
  // Unbuffered: the last lines before a crash are the ones that matter.
  if (!file_.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
    return false;
  }
  file_.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  size_ = file_.size();
  return true;
}

void LogFile::Append(const QByteArray& line) {
  if (size_ > 0 && size_ + line.size() > kMaxBytes) {
    Rotate();
  }
  const qint64 written = file_.write(line);
  size_ += qMax<qint64>(written, 0);
}

void LogFile::Rotate() {
  const QString name = file_.fileName();
  const auto older = [&name](int number) { return QStringLiteral("%1.%2").arg(name).arg(number); };
  file_.close();
  QFile::remove(older(kOlderFiles));
  for (int number = kOlderFiles - 1; number >= 1; --number) {
    QFile::rename(older(number), older(number + 1));
  }
  QFile::rename(name, older(1));
  Reopen();
}

}  // namespace TarnHost
