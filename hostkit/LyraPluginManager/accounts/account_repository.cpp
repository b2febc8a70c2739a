#include "accounts/account_repository.h"

namespace TarnHost::Store {

std::set<int32_t> CAccountRepository::UsersWithPassword() {
  std::set<int32_t> users;
  if (engine_.BoundUser()) {
    return users;  // the server keeps them from its users
  }
  engine_.ForEach("SELECT user_id FROM account", {},
                  [&users](const QSqlQuery& query) { users.insert(query.value(0).toInt()); });
  return users;
}

std::optional<CAccountRepository::Account> CAccountRepository::Find(int32_t user) {
  std::optional<Account> account;
  engine_.ForEach("SELECT hash, wrong_tries, locked_at FROM account WHERE user_id = ?", {user},
                  [&account](const QSqlQuery& query) {
                    const LogInTries tries{query.value(1).toInt(), query.value(2).toLongLong()};
                    account = Account{query.value(0).toString(), tries};
                  });
  return account;
}

void CAccountRepository::SetHash(int32_t user, const QString& hash) {
  engine_.Execute(
      "INSERT INTO account (user_id, hash, wrong_tries, locked_at) VALUES (?, ?, 0, 0)"
      " ON CONFLICT (user_id) DO UPDATE SET hash = excluded.hash, wrong_tries = 0, locked_at = 0",
      {user, hash});
}

void CAccountRepository::SetTries(int32_t user, const LogInTries& tries) {
  engine_.Execute("UPDATE account SET wrong_tries = ?, locked_at = ? WHERE user_id = ?",
                  {tries.wrong, static_cast<qlonglong>(tries.locked_at), user});
}

void CAccountRepository::Remove(int32_t user) {
  engine_.Execute("DELETE FROM account WHERE user_id = ?", {user});
}

}  // namespace TarnHost::Store
