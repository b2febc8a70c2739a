#pragma once

#include "host_export.h"

namespace marlog {

enum Level { Info = 1, Warning = 2, Error = 3 };

/// Appends one line to the client's log. `module` is the log's section ("LyraClientInfo", "LyraClientError"),
/// `format` a printf format. Thread: any.
TARN_HOST_EXPORT void Write(const char* module, int level, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

}  // namespace marlog
