#pragma once

#include <memory>
#include <mutex>

#include "TarnHost/log_in.h"
#include "accounts/account_repository.h"
#include "accounts/tries_in_memory.h"
#include "store/site_directory.h"
#include "store/store_runner.h"

namespace TarnHost::Store {

/// Whether a password is a user's, where the store itself keeps passwords. Reckons on the thread that asks, not on the
/// database's. Thread: any.
class CAccountCheck {
 public:
  explicit CAccountCheck(CStoreRunner& runner) : runner_(runner) {}

  struct Answer {
    LogInAnswer said;
    std::shared_ptr<const CSiteDirectory::User> user;  // where it is done
    QString hash;                                      // what the password fits; empty for a user who has none
  };

  /// Waits for the store. What cannot be counted there is counted in memory.
  Answer Check(const LogInRequest& request);
  /// The user of this answer is the current one from here on.
  void OnLoggedIn(const Answer& answer);

 private:
  struct Try {
    QString hash;      // empty: there is no password
    LogInTries tries;  // with this one
    int locked_seconds = 0;
    bool is_counted = true;  // in the store
  };

  Answer CheckKnown(const std::shared_ptr<const CSiteDirectory::User>& user, const CSecret& password);
  Answer CheckUncounted(const std::shared_ptr<const CSiteDirectory::User>& user, const QString& hash,
                        const CSecret& password);
  Answer CheckUser(const std::shared_ptr<const CSiteDirectory::User>& user, const CSecret& password);
  Try Begin(int32_t user);
  void Forget(int32_t user);
  /// The password last given by who is logged in counts.
  void NoteHash(int32_t user, const QString& hash);
  std::optional<QString> HashInMemory(const CSiteDirectory::User& user);

  CStoreRunner& runner_;
  CTriesInMemory tries_;
  std::mutex mutex_;
  int32_t logged_in_ = 0;
  QString last_hash_;  // of who is logged in, for while the store does not answer
};

}  // namespace TarnHost::Store
