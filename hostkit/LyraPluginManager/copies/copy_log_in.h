#pragma once

#include "TarnHost/log_in.h"
#include "copies/copy_file.h"

namespace TarnHost::Store {

/// Whether the password is the one that the copy's user has logged in with last; wrong ones are counted in the copy
/// and, where that cannot be written, by this process. Throws CStoreError for a copy that cannot be used. Reckons for a
/// part of a second. Thread: any.
LogInAnswer CheckAtCopy(const QString& path, const LogInRequest& request, int64_t now);

}  // namespace TarnHost::Store
