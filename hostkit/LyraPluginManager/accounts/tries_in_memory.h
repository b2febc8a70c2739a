#pragma once

#include <QString>
#include <functional>
#include <map>
#include <mutex>

#include "TarnHost/log_in.h"
#include "accounts/log_in_tries.h"

namespace TarnHost::Store {

/// The answer to who may not try for a while.
LogInAnswer LockedFor(int seconds);
/// The answer to a wrong password, with which there were so many.
LogInAnswer AfterWrongPassword(const LogInTries& tries);

/// Looks at passwords while wrong ones cannot be counted in the store: they are counted here, for each name, to the end
/// of the process. Thread: any.
class CTriesInMemory {
 public:
  /// Asks `fits` whether it is the right one, unless the name is locked. Throws what that throws; the try counts.
  LogInAnswer Check(const QString& name, int64_t now, const std::function<bool()>& fits);
  void Forget(const QString& name);

 private:
  std::mutex mutex_;
  std::map<QString, LogInTries> tries_;
};

}  // namespace TarnHost::Store
