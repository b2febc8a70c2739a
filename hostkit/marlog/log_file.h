#pragma once

#include <QByteArray>

namespace TarnHost {

/// The log's file with its older ones beside it: "name", "name.1" (the youngest) to "name.3". A pipe or a device takes
/// the lines, too, as far as it does at once. Calls the system and not Qt, whose warnings end up here again.
/// Thread: one at a time.
class LogFile {
 public:
  static constexpr qint64 kMaxBytes = 1024 * 1024;
  static constexpr int kOlderFiles = 3;

  LogFile() = default;
  ~LogFile() { Close(); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  /// Appends to what is there; a file that is made is its owner's alone. `name` as the system knows it. False when it
  /// cannot be written.
  bool Open(const QByteArray& name);
  bool IsOpen() const { return descriptor_ >= 0; }
  void Append(const QByteArray& line);
  void Close();

 private:
  void Rotate();
  bool Reopen();
  void Write(const QByteArray& line);

  QByteArray name_;
  int descriptor_ = -1;
  bool rotates_ = false;
  qint64 size_ = 0;
};

}  // namespace TarnHost
