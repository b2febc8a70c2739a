#include "store/store_runner.h"

#include <optional>
#include <utility>

#include "store/call_answer.h"
#include "store/store_opener.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;

constexpr auto kBeat = std::chrono::milliseconds(200);
// Between two attempts to connect again: a server logs each that it refuses.
constexpr auto kBetweenAttempts = std::chrono::seconds(1);
// At its end a store waits so long for what its threads do, then, having cut the connections, for the threads. Who
// closes it has 3 s for all that has to be done.
constexpr std::chrono::milliseconds kOrderlyEnd(1200), kEndAfterCut(800);

}  // namespace

CStoreRunner::CStoreRunner(PlanStoreOptions options)
    : options_(std::move(options)),
      hub_(new CObserverHub),
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
  thread_.Call([self = shared_from_this()] { self->OpenDatabase(); }, CDatabaseThread::kUntilDone);
  Download();
}

// This and what follows up to CloseDatabase(): on the database thread.
void CStoreRunner::OpenDatabase() {
  engine_ = OpenStore(options_.url, {options_.first_content, options_.now()}, watch_);
  OpenReader();
  site_ = CSiteDirectory::Read(*engine_, options_.switch_overrides);
  session_ = std::make_unique<CStoreSession>(
      *engine_, catalog_, user_, *hub_, [this] { return thread_.Claim(); }, closed_);
  writer_ = std::make_unique<CPlanWriter>(*session_, site_, options_.now, options_.steady_now);
  thread_.SetBeat(kBeat, [weak = weak_from_this()] {
    const auto self = weak.lock();
    return self && self->Beat();
  });
}

void CStoreRunner::OpenReader() {
  if (HasReaders(options_.url)) {
    const auto open = [url = options_.url, files = engine_->Files()](auto watch) {
      return Store::OpenReader(url, std::move(watch), files);
    };
    reader_ = std::make_unique<CPlanReader>(open, answering_);
  }
}

// Answers whether the database did.
bool CStoreRunner::Beat() {
  if (connection_lost_ && steady_clock::now() < next_attempt_) {
    return false;
  }
  std::optional<CStoreError> trouble;
  try {
    Reconnect();
    DownloadWhenWanted();
    session_->Poll();
    ReportUnread();
    RequireWritable();
  } catch (const CStoreError& error) {
    trouble = error;
    connection_lost_ = connection_lost_ || error.IsOfConnection();
  } catch (const std::exception& error) {
    trouble = Unforeseen(error);
  }
  troubles_.OnLook(trouble);
  return !connection_lost_;
}

void CStoreRunner::Reconnect() {
  if (connection_lost_) {
    next_attempt_ = steady_clock::now() + kBetweenAttempts;
    if (reader_ && options_.url.startsWith("sqlite:")) {
      reader_->Release();
    }
    session_->Reconnect();
    connection_lost_ = false;
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
  thread_.BeginStop([self = shared_from_this()] { self->CloseDatabase(); });
  if (reader_) {
    reader_->BeginStop();
  }
  auto in_order = steady_clock::now();
  if (!answering_->IsLost()) {
    in_order += kOrderlyEnd;
  }
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
}

bool CStoreRunner::WaitUntilEnded(steady_clock::time_point deadline) {
  const bool reader_ended = !reader_ || reader_->Thread().WaitUntilEnded(deadline);
  return thread_.WaitUntilEnded(deadline) && reader_ended;
}

void CStoreRunner::Report(StoreTrouble trouble, const QString& line) {
  if (options_.on_trouble) {
    const auto report = [weak = weak_from_this(), trouble, line] {
      const auto self = weak.lock();
      if (self && !self->closed_) {
        self->options_.on_trouble(trouble, line);
      }
    };
    QMetaObject::invokeMethod(hub_.get(), report, Qt::QueuedConnection);
  }
}

void CStoreRunner::Download() {
  downloads_.Want(options_.download_delay);
  thread_.Post([self = shared_from_this()] { return self->Beat(); });
}

void CStoreRunner::RequireOpen() const {
  if (closed_) {
    throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

int32_t CStoreRunner::RequireUser() const {
  RequireOpen();
  const int32_t user = user_;
  if (user == 0) {
    throw CStoreError(CStoreError::kNotPermitted, kNoUserLoggedIn);
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
