#include "plans/programme.h"

#include <utility>

#include "MarUIControl/string_conversion.h"

// The plans of a group that play in turn.
namespace TarnClient {

using MarUIControl::StringToQString;
using Reason = Commands::SayFailure::Reason;

void CProgramme::On(const Events::GroupWanted& wanted) {
  if (!wanted.group.may_cycle) {
    return Do(Commands::SayFailure{Reason::GroupsSwitchedOff});
  }
  state_.failed.reset();
  BeginCycle(wanted.group, PlayOrigin::GroupCycle);
}

void CProgramme::BeginCycle(const Events::Group& group, PlayOrigin by) {
  GoOn({group.code, group.name, group.seconds_per_plan, by});
}

// From its first plan, or with the one where it stood.
void CProgramme::GoOn(const Cycle& cycle) {
  EndCycle();
  state_.on_its_way.reset();
  if (cycle.by != PlayOrigin::DefaultView) {
    state_.failed.reset();
  }
  state_.cycle = cycle;
  AskForTurn(Cycle::Awaits::TurnByUser, cycle.HasBegun() ? 0 : 1);
}

void CProgramme::AskForTurn(Cycle::Awaits awaits, int step) {
  state_.cycle->awaits = awaits;
  Do(Commands::FetchTurn{state_.cycle->code, state_.cycle->last, step});
}

void CProgramme::On(const Events::SecondsPerPlanChosen& chosen) {
  const auto take = [&chosen](std::optional<Cycle>& cycle) {
    if (cycle) {
      cycle->seconds_per_plan = chosen.seconds;
    }
  };
  take(state_.cycle);
  if (state_.stopped) {
    take(state_.stopped->cycle);
  }
  if (state_.failed) {
    take(state_.failed->cycle);
  }
}

void CProgramme::On(const Events::TurnOver&) {
  if (state_.cycle && state_.cycle->awaits == Cycle::Awaits::Nothing) {
    AskForTurn(Cycle::Awaits::TurnByTime, 1);
  }
}

void CProgramme::On(const Events::StepWanted& wanted) {
  if (state_.cycle) {
    AskForTurn(Cycle::Awaits::TurnByUser, wanted.step);
  }
}

// The plan on the wall is to stay, so the next one that time has asked for counts for nothing.
void CProgramme::On(const Events::Held&) {
  if (state_.cycle && state_.cycle->awaits == Cycle::Awaits::TurnByTime) {
    state_.cycle->awaits = Cycle::Awaits::Nothing;
    Do(Commands::DropTurn());
  }
}

void CProgramme::On(const Events::TurnCame& came) {
  if (!AwaitsTurn(state_)) {
    return;
  }
  state_.cycle->awaits = Cycle::Awaits::Nothing;
  if (came.turn.outcome == CycleTurn::Outcome::Fetched) {
    ShowTurn(came);
  } else if (came.turn.outcome == CycleTurn::Outcome::Empty) {
    FailCycle({Reason::NoPlans});
  } else {
    FailTurn(came.turn);
  }
}

void CProgramme::FailTurn(const CycleTurn& turn) {
  if (!state_.cycle->HasBegun() || !state_.on_wall) {
    FailFirstTurn(turn);
  } else if (MayPass(turn.error_kind)) {
    RepeatTurn(turn.error);
  } else {
    FailCycle({Reason::GroupFailed, {turn.error}});
  }
}

void CProgramme::FailFirstTurn(const CycleTurn& turn) {
  const Cycle cycle = *state_.cycle;
  EndCycle();
  if (!IsRetry(cycle.by)) {
    Do(Commands::SayFailure{Reason::GroupFailed, {turn.error}});
  }
  Fail({{cycle.code, cycle.by, cycle.name}, cycle, turn.error, MayPass(turn.error_kind)});
}

// A group of one plan does not begin it again at every turn, unless the plan was changed.
void CProgramme::ShowTurn(const Events::TurnCame& came) {
  const CycleTurn& turn = came.turn;
  if (!turn.skipped.isEmpty()) {
    Do(Commands::SayFailure{Reason::PlansSkipped, turn.skipped});
  }
  Cycle& cycle = *state_.cycle;
  const CycleTurn last = std::exchange(cycle.last, turn);
  WallPlace place = std::exchange(cycle.place, {0});
  cycle.failure.reset();
  if (turn.plan.group_index_code == cycle.code && !turn.plan.group_name.empty()) {
    cycle.name = StringToQString(turn.plan.group_name);
  }
  const bool is_same = last.plan.index_code == turn.plan.index_code;
  if (!is_same) {
    place = {0};
  }
  const bool is_held = came.is_held || place.is_held;
  if (!is_same || last.plan.revision != turn.plan.revision || !state_.on_wall) {
    Show(turn.plan, cycle.by, place);
  }
  Do(Commands::BeginTurn{cycle.seconds_per_plan, is_held, place.page});
}

// No one may be there to begin the cycle again. What keeps it waiting is said once, not at every turn.
void CProgramme::RepeatTurn(const QString& error) {
  Do(Commands::Stay{state_.cycle->seconds_per_plan});
  if (std::exchange(state_.cycle->failure, error) != error) {
    Do(Commands::SayFailure{Reason::TurnFailed, {error}});
  }
}

// What is on the wall stays there, without a cycle.
void CProgramme::FailCycle(const Commands::SayFailure& failure) {
  EndCycle();
  Do(failure);
}

void CProgramme::EndCycle() {
  if (state_.cycle) {
    state_.cycle.reset();
    Do(Commands::DropTurn());
    Do(Commands::EndTurns());
  }
}

}  // namespace TarnClient
