// The look at what others changed, on the database thread, and the way back after a connection was lost.
#include "store/store_runner.h"

#include <optional>

#include "store/call_answer.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {

using std::chrono::steady_clock;

namespace {

// Between two attempts to connect again: a server logs each that it refuses.
constexpr auto kBetweenAttempts = std::chrono::seconds(1);
// Between two changes for trial while every change is refused.
constexpr auto kBetweenTries = std::chrono::seconds(3);

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
  const bool was_lost = connection_lost_, was_away = answering_->IsDisconnected();
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
    if (was_away) {  // who asked at once when the catalog was there has been answered from the copy
      hub_->Post({CamerasEvent()});
    }
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
    BeginConnecting();
    try {
      session_->Reconnect([this] { TakeConnection(); });
    } catch (const CStoreError& error) {
      if (error.RefusesAccount()) {
        OnAccountRefused();
      }
      throw;
    }
    OnAccountTaken();
    LeaveCopy();
    connection_lost_ = false;
  }
}

void CStoreRunner::DownloadWhenWanted() {
  const int wanted = downloads_.Wanted();
  if (!downloads_.IsDone(wanted)) {
    session_->ReloadCatalog();
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

void CStoreRunner::Report(StoreTrouble trouble, const QString& line) {
  if (!options_.on_trouble) {
    return;
  }
  const auto copy = Copy();
  const bool is_of_copy = copy && trouble != StoreTrouble::kNone;  // why it is, the line says
  const StoreTrouble shown = is_of_copy ? TroubleWith(copy->Why()) : trouble;
  RunInEvents([call = options_.on_trouble, shown, line] { call(shown, line); });
}

}  // namespace TarnHost::Store
