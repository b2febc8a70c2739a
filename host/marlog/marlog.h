#pragma once

#include "host_export.h"

namespace marlog {

/// How much a line matters.
enum Level {
  Info = 1,     ///< What the client does.
  Warning = 2,  ///< Something is not as it should be, but goes on.
  Error = 3,    ///< Something has failed.
};

/// Appends one line to the client's log. `module` is the log's section ("LyraClientInfo", "LyraClientError"),
/// `level` a Level, `format` a printf format; all are UTF-8. Line breaks in what is printed do not make a second line.
/// Must not wait for a disk or a server: it is called on the GUI thread, too. Thread: any.
TARN_HOST_EXPORT void Write(const char* module, int level, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

}  // namespace marlog
