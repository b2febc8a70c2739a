#pragma once

#include <QDateTime>
#include <optional>
#include <set>
#include <string>

#include "plans/programme_commands.h"
#include "plans/programme_events.h"
#include "wall/wall_place.h"

namespace TarnClient {

/// Decides what plays: what the user asked for or arranged last, else the timed plan during its time, else the default
/// view.
/// Knows no wall, timer or service: an event changes a state, and what is to be done comes out as commands, in the
/// order in which they are to be carried out. An event that they cause comes after the last of them.
class CProgramme {
 public:
  struct Play {
    std::string code;
    PlayOrigin by = PlayOrigin::User;
    QString name = {};     // known once it is on the wall
    WallPlace place = {};  // where it begins
  };
  /// A group whose plans play in turn.
  struct Cycle {
    enum class Awaits { Nothing, TurnByTime, TurnByUser };
    std::string code;
    QString name;
    int seconds_per_plan = 0;
    PlayOrigin by = PlayOrigin::GroupCycle;
    Awaits awaits = Awaits::Nothing;
    CycleTurn last = {};                  // on the wall; a default one at first
    std::optional<QString> failure = {};  // why no other plan came, for a run of failures
    WallPlace place = {0};                // where the plan of the last turn goes on, when it is played again

    bool HasBegun() const { return last.position >= 0; }
  };
  struct TimedEnd {
    QDateTime at;
    bool is_past = false;  // the last look at the clock was past it
  };
  /// A timed plan which may be one that only the last user can see.
  struct Doubtful {
    enum class Question { Asked, Failed, NotSeen };
    Events::Plan plan;
    QDateTime end;
    Question question = Question::Asked;
  };
  /// What the user has stopped and may have again.
  struct Stopped {
    Play play;
    std::optional<Cycle> cycle = {};  // goes on where it stood
    bool default_view_stood = false;
  };
  /// A timed plan whose time is over.
  struct Ended {
    QString name;
    QDateTime at;
  };
  /// What could not be played on the empty wall.
  struct Failed {
    Play play;                        // without a code: it is not known what opens at the start
    std::optional<Cycle> cycle = {};  // in place of a plan; goes on where it stood
    QString reason = {};              // the service's text
    bool may_pass = true;
  };
  struct State {
    std::optional<Play> on_wall;
    bool is_arranged = false;            // by the user: cameras without a plan, or on_wall as he has changed it
    std::optional<Play> on_its_way;      // the plan that was asked for last; none during a cycle
    std::multiset<std::string> fetches;  // of all plans, not answered yet
    std::optional<Cycle> cycle;
    std::optional<TimedEnd> timed_end;  // also while another plan is on the wall
    std::optional<Doubtful> doubtful;
    bool is_new_user = false;          // and no own timed plan of his was seen yet
    bool asks_default_view = false;    // it is not known yet
    bool default_view_stands = false;  // it was opened, and the user has not stopped since
    int failures = 0;                  // of the default view, in a row
    std::optional<Stopped> stopped;
    std::optional<Stopped> deleted;  // its plan went off the wall because it was deleted, and may come back
    std::optional<Ended> ended;      // until something is played, the default view does not count, and for a day
    std::optional<Failed> failed;
  };
  struct Step {
    State state;
    ProgrammeCommands commands;
  };

  /// Whether the next plan of a group is on its way.
  static bool AwaitsTurn(const State& state);
  static Step Next(const State& state, const ProgrammeEvent& event, const QDateTime& now);

 private:
  CProgramme(const State& state, const QDateTime& now) : state_(state), now_(now) {}

  void On(const Events::PlanWanted& wanted);
  void On(const Events::PanelFetches& fetch);
  void On(const Events::PlanCame& came);
  void On(const Events::FetchOver& fetch);
  void On(const Events::PlanRenewed& renewed);
  void On(const Events::WallArranged& arranged);
  void On(const Events::ArrangementWanted& wanted);
  void On(const Events::GroupWanted& wanted);
  void On(const Events::SecondsPerPlanChosen& chosen);
  void On(const Events::TurnOver& over);
  void On(const Events::StepWanted& wanted);
  void On(const Events::Held& held);
  void On(const Events::TurnCame& came);
  void On(const Events::DefaultViewWanted& wanted);
  void On(const Events::DefaultPlanKnown& known);
  void On(const Events::DefaultGroupKnown& known);
  void On(const Events::DefaultViewNone& none);
  void On(const Events::DefaultViewUnknown& unknown);
  void On(const Events::TimedPlanBegins& begins);
  void On(const Events::TimedPlanEnds& ends);
  void On(const Events::SeenAnswered& answer);
  void On(const Events::ClockTicked& ticked);
  void On(const Events::NextPlanDue& due);
  void On(const Events::StopWanted& wanted);
  void On(const Events::PlanIsBack& back);
  void On(const Events::PlayAgainWanted& wanted);
  void On(const Events::OfferOver& over);
  void On(const Events::TryAgainWanted& wanted);
  void On(const Events::UserSwitched& switched);

  template <class Command>
  void Do(Command command) {
    commands_.push_back(std::move(command));
  }
  void Want(const Play& play);
  void Fetch(const Play& play);
  bool IsOnItsWay(const std::string& code) const { return state_.on_its_way && state_.on_its_way->code == code; }
  bool IsOnWall(PlayOrigin by) const { return state_.on_wall && state_.on_wall->by == by; }
  bool IsWallTaken() const { return state_.on_wall || state_.is_arranged; }
  bool IsBusy() const { return IsWallTaken() || state_.on_its_way || state_.cycle; }
  void Show(const Events::Plan& plan, PlayOrigin by, const WallPlace& place);
  Stopped WhatPlays(const WallPlace& place) const;
  void PlayBack(const Stopped& stopped);
  void Clear();
  void EmptyWall();
  void BeginCycle(const Events::Group& group, PlayOrigin by);
  void GoOn(const Cycle& cycle);
  void AskForTurn(Cycle::Awaits awaits, int step);
  void ShowTurn(const Events::TurnCame& came);
  void FailTurn(const CycleTurn& turn);
  void RepeatTurn(const QString& error);
  void FailFirstTurn(const CycleTurn& turn);
  void FailCycle(const Commands::SayFailure& failure);
  void EndCycle();
  bool MayOpenDefaultView();
  void AskDefaultView();
  void OpenDefaultViewAgain(const Failed& failed);
  bool IsRetry(PlayOrigin by) const { return by == PlayOrigin::DefaultView && state_.failures > 0; }
  static bool MayPass(int32_t error_kind);
  void Fail(const Failed& failed);
  void BeginTimed(const Events::Plan& plan);
  void EndTimed();
  void LeaveToUser(const std::optional<TimedEnd>& end);
  void NoteEnd(const QString& name, const std::optional<TimedEnd>& end);
  void AskIfSeen();
  void DropDoubtful();
  void DropWhatIsOver();
  void Settle(const State& before);

  State state_;
  const QDateTime now_;
  ProgrammeCommands commands_;
};

}  // namespace TarnClient
