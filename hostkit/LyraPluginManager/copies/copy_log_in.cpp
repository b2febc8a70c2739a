#include "copies/copy_log_in.h"

#include <QFileInfo>

#include "accounts/account_repository.h"
#include "accounts/password_hash.h"
#include "accounts/tries_in_memory.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

LogInAnswer Wrong() {
  return {LogInOutcome::kWrongPassword, 0, CStoreText(kWrongPassword).Shown()};
}

// A try counts before it is looked at; read and written in one, many at a time are as many. Answers what there were
// before, as far as this process knows where nothing can be written: it remembers its own.
LogInTries Count(CSqlEngine& copy, int32_t user, LogInTries known, int64_t now) {
  try {
    CTransaction transaction(copy, CTransaction::kWrite);
    CAccountRepository accounts(copy);
    if (const auto account = accounts.Find(user)) {
      known = account->tries;
    }
    if (LockedSeconds(known, now) == 0) {
      accounts.SetTries(user, WithOneMore(known, now));
    }
    transaction.Commit();
  } catch (const CStoreError&) {
  }
  return known;
}

void Forget(CSqlEngine& copy, int32_t user) {
  try {
    CTransaction transaction(copy, CTransaction::kWrite);
    CAccountRepository(copy).SetTries(user, {});
    transaction.Commit();
  } catch (const CStoreError&) {
    // they are forgotten at the next log-in
  }
}

}  // namespace

LogInAnswer CheckAtCopy(const QString& path, const LogInRequest& request, int64_t now) {
  if (!QFileInfo::exists(path)) {
    return Wrong();
  }
  const auto copy = CopyFile::OpenAgain(path);
  const CopyFacts facts = CopyFile::FactsOf(*copy);
  if (facts.user != request.user) {
    return Wrong();
  }
  const auto account = CAccountRepository(*copy).Find(facts.user_id);
  if (!account) {
    return {LogInOutcome::kDone};
  }
  const LogInTries before = Count(*copy, facts.user_id, account->tries, now);
  const int locked = LockedSeconds(before, now);
  if (locked > 0) {
    return LockedFor(locked);
  }
  static CTriesInMemory tries;
  const LogInAnswer answer =
      tries.Check(path, now, [&] { return PasswordHash::Fits(account->hash, request.password); });
  if (answer.IsDone()) {
    Forget(*copy, facts.user_id);
  }
  return answer.outcome == LogInOutcome::kWrongPassword ? AfterWrongPassword(WithOneMore(before, now)) : answer;
}

}  // namespace TarnHost::Store
