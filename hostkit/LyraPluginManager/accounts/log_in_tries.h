#pragma once

#include <cstdint>

namespace TarnHost::Store {

/// Wrong passwords for one name, as the store keeps them: five in a row lock it for a minute. Times in seconds since
/// 1970, by clocks that may be set, or of machines that disagree.
struct LogInTries {
  static constexpr int kMost = 5;
  static constexpr int64_t kLockSeconds = 60;

  int wrong = 0;
  int64_t locked_at = 0;  // by the last of them
};

/// How many seconds the name stays locked; 0: it may be tried.
int LockedSeconds(const LogInTries& tries, int64_t now);

/// As they stand now: a lock that is over is forgotten, and one that begins later than now, for a clock was set back,
/// begins now.
LogInTries TriesAt(LogInTries tries, int64_t now);

/// After one more, which counts as wrong until it was found to be right.
LogInTries WithOneMore(LogInTries tries, int64_t now);

}  // namespace TarnHost::Store
