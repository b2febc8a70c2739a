#include "store/store_runner.h"

#include <optional>
#include <utility>

#include "store/call_answer.h"
#include "store/postgres_address.h"
#include "store/store_opener.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {

using std::chrono::steady_clock;

namespace {

// At its end a store waits so long for what its threads do, then, having cut the connections, for the threads. Who
// closes it has 3 s for all that has to be done.
constexpr std::chrono::milliseconds kOrderlyEnd(1200), kEndAfterCut(800);
// Of the first, for what the copy lacks; without the store there is but its moment.
constexpr std::chrono::milliseconds kLastCopy(800), kLastMoment(300);

std::shared_ptr<CCopyKeeper> KeeperFor(const PlanStoreOptions& options) {
  if (options.copies.isEmpty() || !PostgresAddress::IsMeantBy(options.url)) {
    return nullptr;
  }
  return std::make_shared<CCopyKeeper>(
      CCopyKeeper::Setup{options.copies, options.url, options.copy_pause, options.now});
}

}  // namespace

CStoreRunner::CStoreRunner(PlanStoreOptions options)
    : options_(std::move(options)),
      url_(std::make_shared<CStoreUrl>(options_.url, options_.account)),
      hub_(new CObserverHub),
      keeper_(KeeperFor(options_)),
      answering_(std::make_shared<CAnswering>()),
      watch_(std::make_shared<CConnectionWatch>()),
      troubles_(answering_, [this](StoreTrouble trouble, const QString& line) { Report(trouble, line); }),
      thread_(answering_) {}

// Opening has limits of its own: the engines' and those of the watch.
void CStoreRunner::Start() {
  answering_->SetNews([weak = weak_from_this()] {
    if (const auto self = weak.lock()) {
      self->troubles_.OnAnswering();
    }
  });
  watch_->SetOnSilence([weak = weak_from_this()] {
    if (const auto self = weak.lock()) {
      self->thread_.MarkStuck();
    }
  });
  thread_.Call([self = shared_from_this()] { self->OpenDatabase(); }, CDatabaseThread::kUntilDone);
  Download();
}

// This and what follows up to CloseDatabase(): on the database thread.
void CStoreRunner::OpenDatabase() {
  const bool from_copy = !options_.shows_of.isEmpty();
  if (from_copy) {
    engine_ = StoreToReach(url_->Get(), watch_);
  } else {
    engine_ = OpenStore(url_->Get(), {options_.first_content, options_.now()}, watch_);
  }
  OpenReader();
  session_ = std::make_unique<CStoreSession>(
      *engine_, catalog_, memory_, user_, *hub_, [this] { return thread_.Claim(); }, closed_);
  session_->FollowUsers([this] { return ReadUsers(); });
  writer_ = std::make_unique<CPlanWriter>(*session_, site_, options_.now, options_.steady_now);
  if (from_copy) {
    OpenFromCopy();
  } else {
    hides_rows_ = engine_->BoundUser().has_value();
    site_.Read(*engine_, options_.switch_overrides);
  }
  StartKeeper();
  const auto beat = [weak = weak_from_this()](bool) {
    const auto self = weak.lock();
    return self && self->Beat();
  };
  const auto before_rest = [weak = weak_from_this()] {
    const auto self = weak.lock();
    return self ? self->BeforeRest() : CDatabaseThread::Rest();
  };
  thread_.SetBeat(engine_->BetweenLooks(), beat, before_rest);
}

void CStoreRunner::OnSaved(bool is_copied) {
  troubles_.OnChange({});
  if (keeper_ && is_copied) {
    keeper_->Touch();
  }
}

void CStoreRunner::OpenReader() {
  if (HasReaders(options_.url)) {
    const auto open = [url = url_, files = engine_->Files()](auto watch) {
      return Store::OpenReader(url->Get(), std::move(watch), files);
    };
    reader_ = std::make_unique<CPlanReader>(open, answering_);
  }
}

bool CStoreRunner::ReadUsers() {
  const int32_t current = user_;
  const auto before = site_.FindUser(current);
  site_.ReadUsers(*engine_);
  const auto now = site_.FindUser(current);
  if (options_.on_users) {
    RunInEvents(options_.on_users);
  }
  return before && (!now || now->rights != before->rights);
}

// A user's role need not be called as he is.
LogInRequest CStoreRunner::AccountOf(const LogInRequest& user) const {
  const auto found = site_.FindUser(user.user.toStdString());
  return {found && !found->role.isEmpty() ? found->role : user.user, user.password};
}

// The server's library would ask with what stands before a NUL; no password there has one.
LogInAnswer CStoreRunner::AskServer(const LogInRequest& user) const {
  if (user.password.Reveal().find('\0') != std::string::npos) {
    return {LogInOutcome::kWrongPassword, 0, CStoreText(kWrongPassword).Shown()};
  }
  return Store::AskServer(WithAccount(url_->Get(), AccountOf(user)), CPlanStore::kServerPatience);
}

std::optional<CSecret> CStoreRunner::PasswordOf(const QString& user) const {
  const LogInRequest account = url_->Account();
  if (has_other_password_ || account.password.IsEmpty() || account.user != AccountOf({user}).user) {
    return std::nullopt;
  }
  return account.password;
}

void CStoreRunner::GoOverTo(const LogInRequest& user) {
  const auto found = site_.FindUser(user.user.toStdString());
  const auto go_over = [self = shared_from_this(), account = AccountOf(user), id = found ? found->id : 0] {
    if (id == 0 || self->engine_->BoundUser() != id) {
      return self->OpenAs(account);
    }
    self->url_->SetAccount(account);  // under another password, it may be
    self->engine_->SetAddress(self->url_->Get());
    self->is_refused_ = false;
    self->next_attempt_ = {};
    self->user_ = id;
  };
  // To its end, which the limits of its statements bring about: done later, it would change the user unnoticed.
  thread_.Call(go_over, CDatabaseThread::kUntilDone);
}

// It may be connected under the other role.
void CStoreRunner::ReleaseReader() {
  if (reader_) {
    reader_->Release();
  }
}

void CStoreRunner::OpenAs(const LogInRequest& account) {
  const LogInRequest before = url_->Account();
  const int32_t user_before = user_;
  url_->SetAccount(account);
  BeginConnecting();
  try {
    session_->OpenAgain([this] {
      TakeConnection();
      user_ = engine_->BoundUser().value_or(0);
    });
    is_refused_ = false;
    if (Copy()) {
      LeaveCopy();
      hub_->Post({WholeTreeEvent()});
    }
    connection_lost_ = false;
  } catch (const CStoreError&) {
    user_ = user_before;
    url_->SetAccount(before);
    engine_->SetAddress(url_->Get());
    engine_->Close();  // nothing of the old user's is written under the new role
    connection_lost_ = true;
    ReleaseReader();
    throw;
  }
  ReleaseReader();
}

void CStoreRunner::CloseDatabase() {
  writer_.reset();
  session_.reset();
  engine_.reset();
}

// A second caller, the last owner's end for one, does not wait again for what was left behind.
bool CStoreRunner::Close() {
  std::call_once(close_once_, [this] { closed_in_order_ = EndThreads(); });
  return closed_in_order_;
}

bool CStoreRunner::EndThreads() {
  closed_ = true;
  hub_->Close();
  if (reader_) {
    reader_->BeginStop();
  }
  const auto begin = steady_clock::now();
  const bool answers = !answering_->IsLost();
  EndKeeper(begin + (answers ? kLastCopy : kLastMoment));
  thread_.BeginStop([self = shared_from_this()] { self->CloseDatabase(); });
  const auto in_order = answers ? begin + kOrderlyEnd : steady_clock::now();
  if (WaitUntilEnded(in_order)) {
    return true;
  }
  CutConnections();
  const bool ended = WaitUntilEnded(in_order + kEndAfterCut);
  if (!ended) {
    LeaveThreadsBehind();
  }
  return ended;
}

// After a last look at the store. What is written then is asked of the database thread.
void CStoreRunner::EndKeeper(steady_clock::time_point deadline) {
  if (!keeper_) {
    return;
  }
  if (answering_->IsLost()) {
    keeper_->BeginStop();
  } else {
    thread_.Post([self = shared_from_this()] {
      const bool answers = self->session_ && self->Beat();  // it may be that it was never opened
      self->keeper_->BeginStop();
      return answers;
    });
  }
  if (!keeper_->Thread().WaitUntilEnded(deadline)) {
    keeper_->Abandon();
    keeper_->BeginStop();
  }
}

void CStoreRunner::CutConnections() {
  watch_->Cut();
  if (reader_) {
    reader_->Cut();
  }
}

void CStoreRunner::LeaveThreadsBehind() {
  thread_.LeaveBehind();
  if (reader_) {
    reader_->Thread().LeaveBehind();
  }
  if (keeper_) {
    keeper_->Thread().LeaveBehind();
  }
}

bool CStoreRunner::WaitUntilEnded(steady_clock::time_point deadline) {
  const bool reader_ended = !reader_ || reader_->Thread().WaitUntilEnded(deadline);
  const bool keeper_ended = !keeper_ || keeper_->Thread().WaitUntilEnded(deadline);
  return thread_.WaitUntilEnded(deadline) && reader_ended && keeper_ended;
}

// On the GUI thread, unless the store is closed by then.
void CStoreRunner::RunInEvents(std::function<void()> call) const {
  const auto run = [weak = weak_from_this(), call = std::move(call)] {
    const auto self = weak.lock();
    if (self && !self->closed_) {
      call();
    }
  };
  QMetaObject::invokeMethod(hub_.get(), run, Qt::QueuedConnection);
}

void CStoreRunner::Download() {
  downloads_.Want(options_.download_delay);
  if (Copy()) {  // which is in memory as it is
    downloads_.SetDone(downloads_.Wanted());
    return;
  }
  thread_.Post([self = shared_from_this()] { return self->Beat(); });
}

void CStoreRunner::RequireOpen() const {
  if (closed_) {
    throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

int32_t CStoreRunner::RequireLogIn() const {
  RequireOpen();
  const int32_t user = user_;
  if (user == 0) {
    throw CStoreError(CStoreError::kNotPermitted, kNoUserLoggedIn);
  }
  return user;
}

int32_t CStoreRunner::RequireUser() const {
  const int32_t user = RequireLogIn();
  if (!site_.FindUser(user)) {
    throw CStoreError(CStoreError::kNotPermitted, kUserGone);
  }
  return user;
}

void CStoreRunner::RequireDownloaded() const {
  RequireOpen();
  if (!IsDownloaded()) {
    throw CStoreError(CStoreError::kNotAnswering,
                      QT_TRANSLATE_NOOP("TarnHost::Store", "The plans have not been downloaded yet."));
  }
}

}  // namespace TarnHost::Store
