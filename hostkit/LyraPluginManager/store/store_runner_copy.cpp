// The copy that stands in for a store which does not answer, and the one that is kept of a store which does.
#include "store/store_runner.h"

#include "TarnHost/store_copies.h"
#include "accounts/account_repository.h"
#include "store/store_opener.h"
#include "store/store_texts.h"

namespace TarnHost::Store {

using std::chrono::steady_clock;

namespace {

// A server, or the directory behind it, may lock who is refused too often.
constexpr auto kAfterRefusal = std::chrono::minutes(5);
// A server that hangs refuses no one.
constexpr auto kQuickRefusal = std::chrono::seconds(2);
constexpr char kOtherSiteThere[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "Another site than that of the copy is at %1 now. Start the client again.");
constexpr char kNotReachedYet[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 does not answer.");

}  // namespace

// From here on all is as with a store whose connection was lost.
void CStoreRunner::OpenFromCopy() {
  ShowCopy(std::make_shared<CShownCopy>(options_.copies, options_.url, options_.shows_of));
  site_.Read(*copy_->Open(), options_.switch_overrides);
  const CStoreError away(CStoreError::kConnectionLost, {kNotReachedYet, {engine_->Place()}});
  connection_lost_ = true;
  answering_->SetDisconnected(away);
  troubles_.OnLook(away);
}

void CStoreRunner::ShowCopy(std::shared_ptr<CShownCopy> copy) {
  hides_rows_ = copy->Facts().is_bound;
  std::atomic_store(&copy_, copy);
  session_->LoadCopy(*copy->Open());
}

LogInAnswer CStoreRunner::AskCopy(const LogInRequest& user) const {
  return StoreCopies::Check(options_.copies, options_.url, user);
}

void CStoreRunner::LogInAtCopy(const LogInRequest& user) {
  if (const auto copy = Copy(); copy && copy->Facts().user != user.user) {
    const auto other = std::make_shared<CShownCopy>(options_.copies, options_.url, user.user);
    thread_.Call([self = shared_from_this(), other] {
      if (self->Copy() && other->Facts().station == self->Copy()->Facts().station) {
        self->site_.ReadUsers(*other->Open());
        self->ShowCopy(other);
      }
    });
  }
  const auto copy = Copy();
  if (!copy || copy->Facts().user != user.user) {  // the store was quicker, or it is another site's
    throw CStoreError(CStoreError::kNotAnswering, kNoAnswer);
  }
  if (copy->Facts().is_bound) {
    url_->SetAccount(AccountOf(user));
    thread_.Post([self = shared_from_this()] {
      self->engine_->SetAddress(self->url_->Get());
      return true;
    });
  }
  user_ = copy->Facts().user_id;
}

// The store answers, for the first time where a copy was shown. Nothing is to be written to what is not the copy's.
void CStoreRunner::TakeConnection() {
  const auto copy = Copy();
  if (!copy) {
    return;
  }
  const QString station = engine_->Value("SELECT value FROM store_info WHERE name = 'station_id'").toString();
  if (station != copy->Facts().station) {
    copy->SetWhy(CShownCopy::kOtherSite);
    engine_->Close();
    throw CStoreError(CStoreError::kConnectionLost, {kOtherSiteThere, {engine_->Place()}});
  }
  hides_rows_ = engine_->BoundUser().has_value();
  if (hides_rows_ && user_ != 0) {
    user_ = *engine_->BoundUser();
  }
}

void CStoreRunner::LeaveCopy() {
  const auto copy = Copy();
  if (!copy) {
    return;
  }
  std::atomic_store(&copy_, std::shared_ptr<CShownCopy>());
  if (hides_rows_ || user_ == 0) {
    return;
  }
  const auto account = CAccountRepository(*engine_).Find(user_);
  if ((account ? account->hash : QString()) != copy->Facts().hash) {
    AskForPassword();
  }
}

// Known only by asking again; once a password was refused it is not tried for a while.
void CStoreRunner::LookWhetherPasswordIsRefused(steady_clock::time_point begin) {
  const auto copy = Copy();
  if (!copy || !copy->Facts().is_bound || user_ == 0 || steady_clock::now() - begin > kQuickRefusal ||
      Store::AskServer(url_->Get(), CPlanStore::kServerPatience).outcome != LogInOutcome::kWrongPassword) {
    return;
  }
  next_attempt_ = steady_clock::now() + kAfterRefusal;
  if (copy->Why() != CShownCopy::kPasswordRefused) {
    copy->SetWhy(CShownCopy::kPasswordRefused);
    AskForPassword();
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
  keeper_->SetNewest(connection_lost_ || Copy() ? std::nullopt : session_->NewestChange(), read_up_to_);
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
