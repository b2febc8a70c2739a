#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

#include "TarnHost/log_in.h"
#include "host_export.h"

namespace TarnHost {

/// What this machine keeps of a store on a server for while that does not answer: for each user who has worked here, in
/// a file of its own, what he sees, without passwords but a hash of his own. `folder` is that of
/// PlanStoreOptions::copies, `url` the store's address; for a store in a file and for no folder there are none.
/// Thread: any.
struct TARN_HOST_EXPORT StoreCopies {
  /// One user's copy.
  struct Copy {
    QString user;               ///< Whose it is.
    QDateTime at;               ///< When it was true.
    bool has_password = false;  ///< Check() asks for the password that this user has logged in with last.
  };

  /// Whether there are any, sound or not; cheap.
  static bool HasAny(const QString& folder, const QString& url);
  /// The copies of the store at `url`, the newest first. Reads nearly all of each. One that cannot be used is left out;
  /// `why_not` gets a line on the last of those.
  static std::vector<Copy> Of(const QString& folder, const QString& url, QString* why_not = nullptr);
  /// Whether the password is the one that this user has logged in with last. Wrong ones count as at the store; a user
  /// without a copy has a wrong one. kRefused for a copy that cannot be used. Reckons for a part of a second.
  static LogInAnswer Check(const QString& folder, const QString& url, const LogInRequest& request);
  /// Removes the copies of this store.
  static void Remove(const QString& folder, const QString& url);
};

}  // namespace TarnHost
