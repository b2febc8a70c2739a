#pragma once

#include <optional>
#include <set>

#include "accounts/log_in_tries.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// The statements on the passwords that the store itself keeps. A user without a row has none. Throws CStoreError.
/// Thread: the engine's.
class CAccountRepository {
 public:
  struct Account {
    QString hash;
    LogInTries tries;
  };

  explicit CAccountRepository(CSqlEngine& engine) : engine_(engine) {}

  /// Empty where the account may not look.
  std::set<int32_t> UsersWithPassword();
  std::optional<Account> Find(int32_t user);
  /// Forgets the wrong tries, too.
  void SetHash(int32_t user, const QString& hash);
  void SetTries(int32_t user, const LogInTries& tries);
  void Remove(int32_t user);

 private:
  CSqlEngine& engine_;
};

}  // namespace TarnHost::Store
