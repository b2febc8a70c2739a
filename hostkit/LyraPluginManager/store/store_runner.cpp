#include "store/store_runner.h"

#include <optional>
#include <utility>

#include "TarnHost/store_copies.h"
#include "accounts/account_repository.h"
#include "store/call_answer.h"
#include "store/postgres_address.h"
#include "store/store_opener.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;

// Between two attempts to connect again: a server logs each that it refuses.
constexpr auto kBetweenAttempts = std::chrono::seconds(1);
// Between two changes for trial while every change is refused.
constexpr auto kBetweenTries = std::chrono::seconds(3);
// A server, or the directory behind it, may lock who is refused too often.
constexpr auto kAfterRefusal = std::chrono::minutes(5);
// A server that hangs refuses no one.
constexpr auto kQuickRefusal = std::chrono::seconds(2);
constexpr char kOtherSiteThere[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "Another site than that of the copy is at %1 now. Start the client again.");
constexpr char kNotReachedYet[] = QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store %1 does not answer.");
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

StoreTrouble TroubleWith(CShownCopy::Reason reason) {
  switch (reason) {
    case CShownCopy::kPasswordRefused:
      return StoreTrouble::kPasswordRefused;
    case CShownCopy::kOtherSite:
      return StoreTrouble::kOtherSite;
    case CShownCopy::kNoAnswer:
      break;
  }
  return StoreTrouble::kNoAnswerYet;
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

void CStoreRunner::OnSaved() {
  troubles_.OnChange({});
  if (keeper_) {
    keeper_->Touch();
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
  engine_->SetAddress(url_->Get());
  try {
    session_->OpenAgain([this] {
      TakeConnection();
      user_ = engine_->BoundUser().value_or(0);
    });
    connection_lost_ = false;
    if (Copy()) {
      LeaveCopy();
      hub_->Post({WholeTreeEvent()});
    }
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

// A role to which the tables are closed from one look to the next is no user's any more.
void CStoreRunner::OnLook(const CStoreError& error) {
  if (hides_rows_ && error.GetKind() == CStoreError::kNoRight && site_.FindUser(user_)) {
    site_.Remove(user_);
    session_->DropCatalog();
    hub_->Post({WholeTreeEvent()});
  }
}

// Answers whether the database did. After a connection has died, over which nothing was under way, there may be a
// server again by now that was only started again.
bool CStoreRunner::Beat() {
  const bool answers = LookWhenItIsTime();
  NameOwner();
  return answers;
}

bool CStoreRunner::LookWhenItIsTime() {
  if (connection_lost_ && steady_clock::now() < next_attempt_) {
    return false;
  }
  const bool was_lost = connection_lost_;
  std::optional<CStoreError> trouble = Look();
  if (connection_lost_ && !was_lost && !watch_->WasCut()) {
    trouble = Look();
  }
  is_followed_ = !trouble;
  if (connection_lost_) {
    answering_->SetDisconnected(trouble);
  } else {
    answering_->SetDisconnected(std::nullopt);
    thread_.MarkAnswering();
    std::atomic_store(&stand_in_, std::shared_ptr<CShownCopy>());
  }
  troubles_.OnLook(trouble);
  return !connection_lost_;
}

std::optional<CStoreError> CStoreRunner::Look() {
  try {
    Reconnect();
    DownloadWhenWanted();
    const QDateTime now = options_.now();
    session_->Poll();
    read_up_to_ = now;
    session_->KeepTimedPlans(options_.now().time().msecsSinceStartOfDay() / 1000);
    ReportUnread();
    RequireWritable();
  } catch (const CStoreError& error) {
    connection_lost_ = connection_lost_ || error.IsOfConnection();
    OnLook(error);
    return error;
  } catch (const std::exception& error) {
    return Unforeseen(error);
  }
  TryToWrite();
  return std::nullopt;
}

// A lock that has gone or a disk that has room again shows in nothing else.
void CStoreRunner::TryToWrite() {
  if (!troubles_.IsOfChange()) {
    next_try_ = steady_clock::now() + kBetweenTries;
    return;
  }
  if (steady_clock::now() < next_try_) {
    return;
  }
  next_try_ = steady_clock::now() + kBetweenTries;
  try {
    session_->TryToWrite();
    troubles_.OnChange({});
  } catch (const CStoreError& refusal) {
    troubles_.OnChange(refusal);
  }
}

CDatabaseThread::Rest CStoreRunner::BeforeRest() {
  if (!is_followed_) {  // what is announced would not be taken in, and wake the thread for ever
    return {};
  }
  return {engine_->NewsSocket(), engine_->HasNews()};
}

void CStoreRunner::Reconnect() {
  if (connection_lost_) {
    next_attempt_ = steady_clock::now() + kBetweenAttempts;
    if (reader_ && options_.url.startsWith("sqlite:")) {
      reader_->Release();
    }
    const auto begin = steady_clock::now();
    try {
      session_->Reconnect([this] { TakeConnection(); });
    } catch (const CStoreError&) {
      LookWhetherPasswordIsRefused(begin);
      throw;
    }
    connection_lost_ = false;
    LeaveCopy();
  }
}

void CStoreRunner::DownloadWhenWanted() {
  const int wanted = downloads_.Wanted();
  if (!downloads_.IsDone(wanted)) {
    session_->DropCatalog();
    session_->LoadCatalog();
    downloads_.SetDone(wanted);
  }
}

// With every beat, not at the end of a trouble: a plan may be noted just after that.
void CStoreRunner::ReportUnread() {
  if (answering_->IsLost()) {
    return;
  }
  for (const int32_t code : unread_plans_.TakeDue()) {
    if (const auto hit = catalog_.FindPlan(code, user_)) {
      session_->Remember(code);
      const std::optional<PlanRow> row = hit->plan;
      hub_->Post(EventsOf(row, row));
    }
  }
}

// Else the user learns of it only after making a change.
void CStoreRunner::RequireWritable() const {
  const CStoreText refusal = engine_->WriteRefusal();
  if (!refusal.IsEmpty()) {
    throw CStoreError(CStoreError::kReadOnly, refusal);
  }
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

void CStoreRunner::Report(StoreTrouble trouble, const QString& line) {
  if (!options_.on_trouble) {
    return;
  }
  const auto copy = Copy();
  const bool is_of_copy = copy && trouble == StoreTrouble::kConnectionLost;
  const StoreTrouble shown = is_of_copy ? TroubleWith(copy->Why()) : trouble;
  RunInEvents([call = options_.on_trouble, shown, line] { call(shown, line); });
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
