#pragma once

#include <QMetaType>
#include <QString>
#include <functional>

#include "TarnHost/secret.h"

namespace TarnHost {

/// What became of a log-in.
enum class LogInOutcome {
  kDone,           ///< The password is right. After CPlanStore::LogIn() the user is the current one.
  kWrongPassword,  ///< This name has another password; or a server, which does not say which, knows no such name.
  kLocked,         ///< Too many wrong passwords for this name; `wait_seconds` says how long it stays so.
  kUnknownUser,    ///< To the user the same as kWrongPassword: who guesses names learns nothing.
  kRefused,        ///< The store takes no one under this name, as a server that has no role of it; or it was cancelled.
  kUnavailable     ///< The store does not answer; the same request may do later.
};

/// Who wants to log in.
struct LogInRequest {
  QString user;                  ///< The name, compared as it is.
  CSecret password = CSecret();  ///< UTF-8; empty for a user who has none.

  /// By both.
  friend bool operator==(const LogInRequest& left, const LogInRequest& right) {
    return left.user == right.user && left.password == right.password;
  }
};

/// The answer to a LogInRequest.
struct LogInAnswer {
  LogInOutcome outcome = LogInOutcome::kUnavailable;  ///< What became of it.
  int wait_seconds = 0;      ///< When it is kLocked: how many seconds the name stays locked, 60 at the most; else 0.
  QString line = QString();  ///< For the user, in the user's language: why not. May name who does not exist.

  /// Whether the outcome is kDone.
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
