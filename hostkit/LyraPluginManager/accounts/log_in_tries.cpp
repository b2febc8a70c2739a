#include "accounts/log_in_tries.h"

#include <algorithm>

namespace TarnHost::Store {

LogInTries TriesAt(LogInTries tries, int64_t now) {
  if (tries.wrong < LogInTries::kMost) {
    return tries;
  }
  tries.locked_at = std::min(tries.locked_at, now);
  if (now - tries.locked_at >= LogInTries::kLockSeconds) {
    return {};
  }
  return tries;
}

int LockedSeconds(const LogInTries& tries, int64_t now) {
  const LogInTries current = TriesAt(tries, now);
  if (current.wrong < LogInTries::kMost) {
    return 0;
  }
  return static_cast<int>(LogInTries::kLockSeconds - (now - current.locked_at));
}

LogInTries WithOneMore(LogInTries tries, int64_t now) {
  tries = TriesAt(tries, now);
  ++tries.wrong;
  if (tries.wrong >= LogInTries::kMost) {
    tries.locked_at = now;
  }
  return tries;
}

}  // namespace TarnHost::Store
