#pragma once

#include <QObject>
#include <QVector>
#include <memory>

#include "wall/page_clock.h"
#include "wall/turn_time.h"

namespace TarnClient {

/// Says when the wall's page is over and, while the plan on it is a turn of a group cycle, when the next plan is due.
/// A hold stops both. Thread: GUI.
class CWallClock : public QObject {
  Q_OBJECT
 public:
  /// No turn clock: real time.
  CWallClock(std::unique_ptr<CPageClock> page_clock, std::unique_ptr<CPageClock> turn_clock, QObject* parent = nullptr);
  ~CWallClock() override;

  /// A plan with these pages is on the wall: no turn yet, and not held.
  void BeginPlan(const QVector<int>& page_seconds);
  /// The plan that is on has these pages now. The page goes on unless it has another time; so do hold and turn.
  void ChangePlan(const QVector<int>& page_seconds, int page_before, int page);
  void Stop() { BeginPlan({}); }
  /// This page has come on.
  void BeginPage(int page);
  /// The user has gone to this page.
  void GoToPage(int page);
  /// The plan stays for a turn from now on.
  void BeginTurn(int least_seconds);
  /// The turn is over, but no other plan came: this one stays for so long, whatever its pages take.
  void Stay(int seconds);
  /// The plan stays without an end.
  void EndTurns();
  void SetHeld(bool held);

  bool IsHeld() const { return page_clock_->IsPaused(); }
  bool IsInTurn() const { return turn_ != Turn::None; }
  int PageSecondsLeft() const { return page_clock_->SecondsLeft(); }
  int TurnSecondsLeft() const { return turn_clock_->SecondsLeft(); }

 Q_SIGNALS:
  void SignalPageOver();
  void SignalTurnOver();

 private:
  enum class Turn { None, On, Over, Stay };  // Over: the next plan is awaited; Stay: it could not be had

  void Begin(Turn turn, const CTurnTime& time);
  bool TurnRuns() const { return turn_ == Turn::On || turn_ == Turn::Stay; }
  void ChangeTurn(int page);
  void OnPageOver();
  void OnTurnOver();
  bool HasSeveralPages() const { return page_seconds_.size() > 1; }

  std::unique_ptr<CPageClock> page_clock_, turn_clock_;
  QVector<int> page_seconds_;
  int least_seconds_ = 0;
  CTurnTime turn_time_;
  Turn turn_ = Turn::None;
};

}  // namespace TarnClient
