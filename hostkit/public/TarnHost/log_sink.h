#pragma once

#include <QString>
#include <functional>

#include "host_export.h"

namespace TarnHost {

/// Where marlog::Write() goes: a rotating file and one listener. Thread: any.
struct TARN_HOST_EXPORT LogSink {
  /// Gets each line: the log's section, a marlog::Level, and the text without time and line break.
  using Listener = std::function<void(const QString& module, int level, const QString& line)>;

  /// Opens the log file (1 MiB, 3 older ones kept), with its folder; a pipe or a device will do. A file that is made is
  /// its owner's alone, one that is there keeps its rights. False when it cannot be written: lines then go to stderr.
  static bool OpenFile(const QString& path);
  /// Sets the one listener, called in the writing thread with no lock held; an empty function removes it. A line that
  /// is being written meanwhile may still come to the one before.
  static void SetListener(Listener listener);
  /// Lines then go nowhere but to the listener.
  static void Close();
};

}  // namespace TarnHost
