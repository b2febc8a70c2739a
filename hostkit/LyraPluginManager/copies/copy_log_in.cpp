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

void Note(CSqlEngine& copy, int32_t user, const LogInTries& tries) {
  try {
    CTransaction transaction(copy, CTransaction::kWrite);
    CAccountRepository(copy).SetTries(user, tries);
    transaction.Commit();
  } catch (const CStoreError&) {
    // this process remembers it
  }
}

}  // namespace

// A try counts before it is looked at: many at a time are as many.
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
  const int locked = LockedSeconds(account->tries, now);
  if (locked > 0) {
    return LockedFor(locked);
  }
  const LogInTries with_this = WithOneMore(account->tries, now);
  Note(*copy, facts.user_id, with_this);
  static CTriesInMemory tries;
  const LogInAnswer answer =
      tries.Check(path, now, [&] { return PasswordHash::Fits(account->hash, request.password); });
  if (answer.IsDone()) {
    Note(*copy, facts.user_id, {});
  }
  return answer.outcome == LogInOutcome::kWrongPassword ? AfterWrongPassword(with_this) : answer;
}

}  // namespace TarnHost::Store
