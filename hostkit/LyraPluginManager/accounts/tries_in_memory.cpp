#include "accounts/tries_in_memory.h"

#include "store/store_error.h"
#include "store/store_texts.h"

namespace TarnHost::Store {

LogInAnswer LockedFor(int seconds) {
  const CStoreText text(QT_TRANSLATE_NOOP("TarnHost::Store", "Too many wrong passwords. Log in again in %1 seconds."),
                        {QString::number(seconds)});
  return {LogInOutcome::kLocked, seconds, text.Shown()};
}

LogInAnswer AfterWrongPassword(const LogInTries& tries) {
  if (tries.wrong >= LogInTries::kMost) {
    return LockedFor(LogInTries::kLockSeconds);
  }
  return {LogInOutcome::kWrongPassword, 0, CStoreText(kWrongPassword).Shown()};
}

LogInAnswer CTriesInMemory::Check(const QString& name, int64_t now, const std::function<bool()>& fits) {
  LogInTries with_this;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    LogInTries& tries = tries_[name];
    const int locked = LockedSeconds(tries, now);
    if (locked > 0) {
      return LockedFor(locked);
    }
    with_this = tries = WithOneMore(tries, now);
  }
  if (!fits()) {
    return AfterWrongPassword(with_this);
  }
  Forget(name);
  return {LogInOutcome::kDone};
}

void CTriesInMemory::Forget(const QString& name) {
  const std::lock_guard<std::mutex> lock(mutex_);
  tries_.erase(name);
}

}  // namespace TarnHost::Store
