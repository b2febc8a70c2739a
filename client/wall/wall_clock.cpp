#include "wall/wall_clock.h"

namespace TarnClient {

CWallClock::CWallClock(std::unique_ptr<CPageClock> page_clock, std::unique_ptr<CPageClock> turn_clock, QObject* parent)
    : QObject(parent), page_clock_(std::move(page_clock)), turn_clock_(std::move(turn_clock)) {
  if (!turn_clock_) {
    turn_clock_ = std::make_unique<CPageClock>();
  }
  connect(page_clock_.get(), &CPageClock::SignalTurn, this, &CWallClock::OnPageOver);
  connect(turn_clock_.get(), &CPageClock::SignalTurn, this, &CWallClock::OnTurnOver);
}

CWallClock::~CWallClock() = default;

void CWallClock::BeginPlan(const QVector<int>& page_seconds) {
  page_seconds_ = page_seconds;
  page_clock_->Stop();
  EndTurns();
}

void CWallClock::ChangePlan(const QVector<int>& page_seconds, int page_before, int page) {
  const bool goes_on = HasSeveralPages() && page_seconds_.at(page_before) == page_seconds.at(page);
  const bool is_changed = page_seconds_ != page_seconds;
  page_seconds_ = page_seconds;
  if (!HasSeveralPages()) {
    const bool held = IsInTurn() && IsHeld();
    page_clock_->Stop();
    page_clock_->SetPaused(held);
  } else if (!goes_on) {
    BeginPage(page);
  }
  if (is_changed && (turn_ == Turn::On || turn_ == Turn::Over)) {
    ChangeTurn(page);
  }
}

// The pages from this one on get their times, less what has been shown of it.
void CWallClock::ChangeTurn(int page) {
  turn_time_ = CTurnTime(least_seconds_, page_seconds_);
  if (TurnRuns()) {
    const int time = CPageClock::Bounded(page_seconds_.at(page));
    const int shown = HasSeveralPages() ? time - page_clock_->SecondsLeft() : 0;
    const int left = turn_time_.SecondsLeftFrom(page, turn_clock_->SecondsLeft() + shown) - shown;
    turn_clock_->Begin(qMin(left, turn_time_.Seconds()));
  }
}

void CWallClock::BeginPage(int page) {
  if (HasSeveralPages()) {
    page_clock_->Begin(page_seconds_.at(page));
  }
}

void CWallClock::GoToPage(int page) {
  BeginPage(page);
  if (TurnRuns()) {
    turn_clock_->Begin(turn_time_.SecondsLeftFrom(page, turn_clock_->SecondsLeft()));
  }
}

void CWallClock::BeginTurn(int least_seconds) {
  least_seconds_ = least_seconds;
  Begin(Turn::On, CTurnTime(least_seconds, page_seconds_));
}

void CWallClock::Stay(int seconds) {
  Begin(Turn::Stay, CTurnTime(seconds, {}));
}

void CWallClock::Begin(Turn turn, const CTurnTime& time) {
  turn_ = turn;
  turn_time_ = time;
  turn_clock_->Begin(turn_time_.Seconds());
  turn_clock_->SetPaused(IsHeld());
}

void CWallClock::EndTurns() {
  turn_ = Turn::None;
  turn_clock_->Stop();
}

// Who holds a plan while the next one is awaited wants this one to stay; the next is due again a moment after the hold.
void CWallClock::SetHeld(bool held) {
  page_clock_->SetPaused(held);
  turn_clock_->SetPaused(held);
  if (held && turn_ == Turn::Over) {
    turn_ = Turn::On;
    turn_clock_->Begin(CPageClock::kLeastSeconds);
  }
}

void CWallClock::OnPageOver() {
  if (TurnRuns() && !CTurnTime::HasTimeForAPage(turn_clock_->MsLeft())) {
    page_clock_->Begin(CPageClock::kLeastSeconds);
  } else {
    Q_EMIT SignalPageOver();
  }
}

// The next plan takes a while to come; no page begins just before it.
void CWallClock::OnTurnOver() {
  turn_ = Turn::Over;
  if (HasSeveralPages() && !CTurnTime::HasTimeForAPage(page_clock_->MsLeft())) {
    page_clock_->Begin(CPageClock::kLeastSeconds);
  }
  Q_EMIT SignalTurnOver();
}

}  // namespace TarnClient
