#pragma once

#include <QFile>
#include <QString>

namespace TarnHost {

/// The log's file with its older ones beside it: "name", "name.1" (the youngest) to "name.3". Thread: one at a time.
class LogFile {
 public:
  static constexpr qint64 kMaxBytes = 1024 * 1024;
  static constexpr int kOlderFiles = 3;

  /// Makes the folder when it is missing; appends to what is there. False when the file cannot be written.
  bool Open(const QString& path);
  bool IsOpen() const { return file_.isOpen(); }
  void Append(const QByteArray& line);
  void Close() { file_.close(); }

 private:
  void Rotate();
  bool Reopen();

  QFile file_;
  qint64 size_ = 0;
};

}  // namespace TarnHost
