#include "accounts/account_check.h"

#include "accounts/password_hash.h"
#include "store/call_answer.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

LogInAnswer Unavailable(const CStoreError& error) {
  return {LogInOutcome::kUnavailable, 0, error.Text().Shown()};
}

// Who guesses names must not learn from the time it takes which of them there are.
void TakeAsLongAs(const CSecret& password) {
  static const QString any = PasswordHash::Of(CSecret("."));
  PasswordHash::Fits(any, password);
}

// A store that cannot be written lets its users in all the same.
bool IsOfWriting(const CStoreError& error) {
  return error.GetKind() == CStoreError::kReadOnly || error.GetKind() == CStoreError::kNoRoom ||
         error.GetKind() == CStoreError::kNoRight;
}

}  // namespace

CAccountCheck::Answer CAccountCheck::Check(const LogInRequest& request) {
  try {
    if (const auto user = runner_.Site().FindUser(request.user.toStdString())) {
      return CheckKnown(user, request.password);
    }
    TakeAsLongAs(request.password);
    const CStoreText text(QT_TRANSLATE_NOOP("TarnHost::Store", "There is no user \"%1\"."), {request.user});
    return {{LogInOutcome::kUnknownUser, 0, text.Shown()}, nullptr, QString()};
  } catch (const CStoreError& error) {
    return {Unavailable(error), nullptr, QString()};
  } catch (const std::exception& error) {
    return {Unavailable(Unforeseen(error)), nullptr, QString()};
  }
}

// Without the store, whose password is known here.
CAccountCheck::Answer CAccountCheck::CheckKnown(const std::shared_ptr<const CSiteDirectory::User>& user,
                                                const CSecret& password) {
  std::optional<QString> hash;
  try {
    return CheckUser(user, password);
  } catch (const CStoreError&) {
    hash = HashInMemory(*user);
    if (!hash) {
      throw;
    }
  }
  return CheckUncounted(user, *hash, password);
}

CAccountCheck::Answer CAccountCheck::CheckUncounted(const std::shared_ptr<const CSiteDirectory::User>& user,
                                                    const QString& hash, const CSecret& password) {
  if (hash.isEmpty()) {
    return {{LogInOutcome::kDone}, user, hash};
  }
  const LogInAnswer answer = tries_.Check(QString::fromStdString(user->name), runner_.Now().toSecsSinceEpoch(),
                                          [&] { return PasswordHash::Fits(hash, password); });
  return {answer, answer.IsDone() ? user : nullptr, hash};
}

// Who has no password waits for nothing where nothing may wait: at the start, when the users have just been read. A try
// is counted before it is looked at: many at a time are as many.
CAccountCheck::Answer CAccountCheck::CheckUser(const std::shared_ptr<const CSiteDirectory::User>& user,
                                               const CSecret& password) {
  if (!user->has_password && runner_.AsksMemory()) {
    return {{LogInOutcome::kDone}, user, QString()};
  }
  const Try begun = Begin(user->id);
  if (begun.locked_seconds > 0) {
    return {LockedFor(begun.locked_seconds), nullptr, QString()};
  }
  if (!begun.is_counted) {
    return CheckUncounted(user, begun.hash, password);
  }
  if (!begun.hash.isEmpty() && !PasswordHash::Fits(begun.hash, password)) {
    return {AfterWrongPassword(begun.tries), nullptr, QString()};
  }
  tries_.Forget(QString::fromStdString(user->name));
  if (begun.tries.wrong > 0) {
    Forget(user->id);
  }
  NoteHash(user->id, begun.hash);
  return {{LogInOutcome::kDone}, user, begun.hash};
}

CAccountCheck::Try CAccountCheck::Begin(int32_t user) {
  const auto account = runner_.OnDatabase([user](CSqlEngine& engine) { return CAccountRepository(engine).Find(user); });
  if (!account) {
    return {};
  }
  const int64_t now = runner_.Now().toSecsSinceEpoch();
  try {
    return runner_.OnDatabase([user, now](CSqlEngine& engine) -> Try {
      CTransaction transaction(engine, CTransaction::kWrite);
      CAccountRepository accounts(engine);
      const auto current = accounts.Find(user);
      if (!current) {
        return {};
      }
      const LogInTries before = TriesAt(current->tries, now);
      const int locked = LockedSeconds(before, now);
      const LogInTries after = locked > 0 ? before : WithOneMore(before, now);
      accounts.SetTries(user, after);
      transaction.Commit();
      return {current->hash, after, locked};
    });
  } catch (const CStoreError& error) {
    if (!IsOfWriting(error)) {
      throw;
    }
    return {account->hash, {}, LockedSeconds(account->tries, now), false};
  }
}

// At the worst this one counts as wrong, too, and the name is locked for a minute.
void CAccountCheck::Forget(int32_t user) {
  try {
    runner_.OnDatabase([user](CSqlEngine& engine) {
      CTransaction transaction(engine, CTransaction::kWrite);
      CAccountRepository(engine).SetTries(user, {});
      transaction.Commit();
    });
  } catch (const CStoreError&) {
  }
}

void CAccountCheck::OnLoggedIn(const Answer& answer) {
  const std::lock_guard<std::mutex> lock(mutex_);
  logged_in_ = answer.user->id;
  last_hash_ = answer.hash;
}

void CAccountCheck::NoteHash(int32_t user, const QString& hash) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (user == logged_in_) {
    last_hash_ = hash;
  }
}

// Empty: there is no password.
std::optional<QString> CAccountCheck::HashInMemory(const CSiteDirectory::User& user) {
  if (!user.has_password) {
    return QString();
  }
  const std::lock_guard<std::mutex> lock(mutex_);
  const bool has_other = runner_.HasOtherPassword() && user.id == runner_.User();
  if (has_other || user.id != logged_in_ || last_hash_.isEmpty()) {  // got one since
    return std::nullopt;
  }
  return last_hash_;
}

}  // namespace TarnHost::Store
