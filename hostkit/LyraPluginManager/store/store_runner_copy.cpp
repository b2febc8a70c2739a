// The copy that stands in for a store which does not answer, and the one that is kept of a store which does.
#include "store/store_runner.h"

#include "TarnHost/store_copies.h"
#include "accounts/account_repository.h"
#include "store/store_opener.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {

using std::chrono::steady_clock;

namespace {

// A server, or the directory behind it, may lock who is refused too often.
constexpr auto kAfterRefusal = std::chrono::minutes(5);
// Of the account that all desks share: it is mended at the server, for which they wait.
constexpr auto kAfterSharedRefusal = std::chrono::seconds(15);
constexpr char kOtherSiteThere[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "Another site than that of the copy is at %1 now. Start the client again.");
constexpr char kNotReachedYet[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 does not answer.");

}  // namespace

// From here on all is as with a store whose connection was lost.
void CStoreRunner::OpenFromCopy() {
  engine_->SetBeforeChanges([this] { RequireSiteOfCopy(); });
  ShowCopy(std::make_shared<CShownCopy>(options_.copies, options_.url, options_.shows_of));
  site_.Read(*copy_->Open(), options_.switch_overrides);
  const CStoreError away(CStoreError::kConnectionLost, {kNotReachedYet, {engine_->Place()}});
  connection_lost_ = true;
  answering_->SetDisconnected(away);
  troubles_.OnLook(away);
}

void CStoreRunner::ShowCopy(const std::shared_ptr<CShownCopy>& copy) {
  session_->LoadCopy(*copy->Open());
  hides_rows_ = copy->Facts().is_bound;
  std::atomic_store(&copy_, copy);
}

LogInAnswer CStoreRunner::AskCopy(const LogInRequest& user) const {
  return StoreCopies::Check(options_.copies, options_.url, user);
}

void CStoreRunner::LogInAtCopy(const LogInRequest& user) {
  if (const auto copy = Copy(); copy && copy->Facts().user != user.user) {
    const auto other = std::make_shared<CShownCopy>(options_.copies, options_.url, user.user);
    // To its end, however long the thread tries to connect: done later, it would change the user unnoticed.
    return thread_.Call([self = shared_from_this(), other, user] { self->ChangeCopy(other, user); },
                        CDatabaseThread::kUntilDone);
  }
  const std::lock_guard<std::mutex> lock(log_in_mutex_);
  const auto copy = Copy();
  if (!copy || copy->Facts().user != user.user) {  // the store was quicker
    throw CStoreError(CStoreError::kNotAnswering, kNoAnswer);
  }
  TakeUserOf(*copy, user);
}

// On the database thread. As at the store, what is read meanwhile is already read for the new user.
void CStoreRunner::ChangeCopy(const std::shared_ptr<CShownCopy>& copy, const LogInRequest& user) {
  const auto before = Copy();
  if (!before || copy->Facts().station != before->Facts().station) {  // the store was quicker, or it is another site's
    throw CStoreError(CStoreError::kNotAnswering, kNoAnswer);
  }
  const int32_t user_before = user_.exchange(copy->Facts().user_id);
  try {
    site_.ReadUsers(*copy->Open());
    ShowCopy(copy);
  } catch (const CStoreError&) {
    user_ = user_before;
    site_.ReadUsers(*before->Open());
    throw;
  }
  const std::lock_guard<std::mutex> lock(log_in_mutex_);
  TakeUserOf(*copy, user);
}

// With the mutex held.
void CStoreRunner::TakeUserOf(const CShownCopy& copy, const LogInRequest& user) {
  ++log_ins_at_copy_;
  if (copy.Facts().is_bound) {
    url_->SetAccount(AccountOf(user));
  }
  user_ = copy.Facts().user_id;
}

// As who is logged in by now. A connection of before is not his, though it may come about only afterwards.
void CStoreRunner::BeginConnecting() {
  const std::lock_guard<std::mutex> lock(log_in_mutex_);
  connecting_after_ = log_ins_at_copy_;
  engine_->SetAddress(url_->Get());
}

// Nothing is to be written to what is not the copy's, not even a newer layout.
void CStoreRunner::RequireSiteOfCopy() {
  const auto copy = Copy();
  if (!copy) {
    return;
  }
  const QString station = engine_->Value("SELECT value FROM store_info WHERE name = 'station_id'").toString();
  if (station != copy->Facts().station) {
    copy->SetWhy(CShownCopy::kOtherSite);
    throw CStoreError(CStoreError::kConnectionLost, {kOtherSiteThere, {engine_->Place()}});
  }
}

// The store answers, for the first time where a copy was shown. Whatever is to be asked of it is asked before the copy
// is left.
void CStoreRunner::TakeConnection() {
  const auto copy = Copy();
  if (!copy) {
    return;
  }
  {
    const std::lock_guard<std::mutex> lock(log_in_mutex_);
    if (!IsForWhoIsLoggedIn()) {
      BreakOff();
    }
    hides_rows_ = engine_->BoundUser().has_value();
    if (hides_rows_ && user_ != 0) {
      user_ = *engine_->BoundUser();
    }
  }
  knows_other_password_ = KnowsOtherPassword(copy->Facts());
}

// A server that lets users in by their passwords has asked for this one already.
bool CStoreRunner::KnowsOtherPassword(const CopyFacts& facts) {
  const int32_t user = user_;
  if (hides_rows_ || user == 0) {
    return false;
  }
  const auto account = CAccountRepository(*engine_).Find(user);
  return (account ? account->hash : QString()) != facts.hash;
}

void CStoreRunner::LeaveCopy() {
  const auto copy = Copy();
  if (!copy) {
    return;
  }
  if (!EndCopy()) {  // what was read from the store is as the user of before sees it
    ShowCopy(copy);
    hub_->Post({WholeTreeEvent()});
    BreakOff();
  }
  if (knows_other_password_) {
    AskForPassword();
  }
}

// False when somebody has logged in at the copy meanwhile.
bool CStoreRunner::EndCopy() {
  const std::lock_guard<std::mutex> lock(log_in_mutex_);
  const bool may_end = IsForWhoIsLoggedIn();
  if (may_end) {
    std::atomic_store(&copy_, std::shared_ptr<CShownCopy>());
  }
  return may_end;
}

// The connection. With the mutex held.
bool CStoreRunner::IsForWhoIsLoggedIn() const {
  return connecting_after_ == log_ins_at_copy_;
}

void CStoreRunner::BreakOff() {
  engine_->Close();
  throw CStoreError(CStoreError::kConnectionLost, {kNotReachedYet, {engine_->Place()}});
}

// Only who is logged in can be asked; the password of the account that owns the store is not known at a desk.
void CStoreRunner::OnAccountRefused() {
  const std::lock_guard<std::mutex> lock(log_in_mutex_);
  if (!hides_rows_) {
    next_attempt_ = steady_clock::now() + kAfterSharedRefusal;
    is_refused_ = true;
    return;
  }
  if (user_ == 0 || !IsForWhoIsLoggedIn()) {
    return;
  }
  next_attempt_ = steady_clock::now() + kAfterRefusal;
  if (const auto copy = Copy()) {
    copy->SetWhy(CShownCopy::kPasswordRefused);
  }
  if (!is_refused_.exchange(true)) {
    AskForPassword();
  }
}

// It may be the very one that was refused: a server that knew no user for a time, or a mistake that was put right.
void CStoreRunner::OnAccountTaken() {
  if (is_refused_.exchange(false) && hides_rows_) {
    has_other_password_ = false;
  }
}

// Each reading would be one more attempt under an account that the server may lock.
void CStoreRunner::RequireAccount() const {
  if (is_refused_) {
    throw answering_->Refusal();
  }
}

void CStoreRunner::AskForPassword() {
  has_other_password_ = true;
  if (options_.on_password_asked) {
    RunInEvents(options_.on_password_asked);
  }
}

// Over the store's own connection, a little at a time: a server has no sessions to spare.
void CStoreRunner::StartKeeper() {
  if (!keeper_) {
    return;
  }
  keeper_->Start([weak = weak_from_this()](const auto& work) {
    const auto self = weak.lock();
    if (!self) {
      throw CStoreError(CStoreError::kClosed, kStoreClosed);
    }
    self->OnDatabase(work);
  });
}

// Whose copy is kept: of who is logged in, as far as the store answers.
void CStoreRunner::NameOwner() {
  if (!keeper_) {
    return;
  }
  const auto user = site_.FindUser(user_);
  if (user && !Copy()) {
    keeper_->SetOwner({ToQt(user->name), user->id, hides_rows_, url_->Account().password});
  }
  keeper_->SetNewest(connection_lost_ || Copy() ? std::nullopt : session_->NewestChange(), read_up_to_,
                     session_->Connections());
}

// Its opening is short but takes the disk.
std::shared_ptr<CShownCopy> CStoreRunner::StandIn() {
  const int32_t user = user_;
  if (!keeper_ || Copy() || !answering_->IsLost()) {
    return nullptr;
  }
  if (const auto known = std::atomic_load(&stand_in_); known && known->Facts().user_id == user) {
    return known;
  }
  const auto found = site_.FindUser(user);
  if (!found || hub_->thread() == QThread::currentThread()) {
    return nullptr;
  }
  try {
    const auto copy =
        std::make_shared<CShownCopy>(options_.copies, options_.url, ToQt(found->name), CShownCopy::kInPart);
    if (copy->Facts().user_id == user && copy->Facts().station == ToQt(site_.StationId())) {
      std::atomic_store(&stand_in_, copy);
      return copy;
    }
  } catch (const CStoreError&) {
    // none, or none that can be used
  }
  return nullptr;
}

}  // namespace TarnHost::Store
