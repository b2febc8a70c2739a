#pragma once

#include <QMetaType>
#include <QString>
#include <functional>

#include "TarnHost/secret.h"

namespace TarnHost {

/// What became of a log-in.
enum class LogInOutcome {
  kDone,
  kWrongPassword,
  kLocked,       // too many wrong passwords for this name; `wait_seconds` says how long
  kUnknownUser,  // to the user the same as kWrongPassword: who guesses names learns nothing
  kRefused,      // the store takes no one under this name, as a server that has no role of it
  kUnavailable   // the store does not answer; the same request may do later
};

struct LogInRequest {
  QString user;
  CSecret password = CSecret();  // empty for a user who has none

  friend bool operator==(const LogInRequest& left, const LogInRequest& right) {
    return left.user == right.user && left.password == right.password;
  }
};

struct LogInAnswer {
  LogInOutcome outcome = LogInOutcome::kUnavailable;
  int wait_seconds = 0;
  QString line = QString();  // for the user, why not; may name who does not exist

  bool IsDone() const { return outcome == LogInOutcome::kDone; }
};

/// What happens in the course of a log-in that may take a while.
struct LogInSteps {
  /// Asked once, on the thread of the log-in, when all but making the user the current one is done: false leaves it at
  /// that, as kRefused. Unset: true.
  std::function<bool()> is_wanted;
  /// Called on the GUI thread, from the event loop, when the user is the current one, before the whole-tree event.
  std::function<void()> before_trees;
};

}  // namespace TarnHost

Q_DECLARE_METATYPE(TarnHost::LogInRequest)
