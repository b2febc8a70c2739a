#include "plans/programme.h"

#include <tuple>
#include <utility>

#include "MarUIControl/string_conversion.h"

// What plays: which plan is wanted, comes and takes the wall.
namespace TarnClient {

using MarUIControl::StringToQString;
using Reason = Commands::SayFailure::Reason;

namespace {

bool NeedsClock(const CProgramme::State& state) {
  return state.timed_end || state.doubtful || state.ended;
}

std::string AwaitedPlan(const CProgramme::State& state) {
  return state.on_its_way.value_or(CProgramme::Play()).code;
}

auto ProgressOf(const CProgramme::State& state) {
  const CProgramme::Cycle cycle = state.cycle.value_or(CProgramme::Cycle());
  return std::make_tuple(cycle.code, cycle.name, cycle.last.position, cycle.last.plans.size());
}

auto WallOf(const CProgramme::State& state) {
  const CProgramme::Play play = state.on_wall.value_or(CProgramme::Play());
  const auto timed_end = state.timed_end.value_or(CProgramme::TimedEnd());
  const auto ended = state.ended.value_or(CProgramme::Ended());
  return std::make_tuple(play.code, play.by, play.name, timed_end.at, ended.name, ended.at);
}

auto OffersOf(const CProgramme::State& state) {
  const auto stopped = state.stopped.value_or(CProgramme::Stopped());
  const auto failed = state.failed.value_or(CProgramme::Failed());
  return std::make_tuple(stopped.play.code, state.failed.has_value(), failed.play.code, failed.reason);
}

// All that the user is shown.
auto ShownOf(const CProgramme::State& state) {
  return std::make_tuple(AwaitedPlan(state), CProgramme::AwaitsTurn(state), ProgressOf(state), WallOf(state),
                         OffersOf(state));
}

}  // namespace

bool CProgramme::AwaitsTurn(const State& state) {
  return state.cycle && state.cycle->awaits != Cycle::Awaits::Nothing;
}

CProgramme::Step CProgramme::Next(const State& state, const ProgrammeEvent& event, const QDateTime& now) {
  CProgramme programme(state, now);
  std::visit([&programme](const auto& happened) { programme.On(happened); }, event);
  programme.Settle(state);
  return {std::move(programme.state_), std::move(programme.commands_)};
}

// What plays takes the place of what was stopped, has ended or has failed. What is only on its way may fail yet.
void CProgramme::DropWhatIsOver() {
  if (state_.on_wall) {
    state_.stopped.reset();
    state_.deleted.reset();
    state_.failed.reset();
    state_.failures = 0;
  }
  // A timed plan that the user is changing is still there when it has ended.
  if (state_.on_wall && !IsOnWall(PlayOrigin::DefaultView) && !state_.is_arranged) {
    state_.ended.reset();
  }
}

// What follows from the state alone.
void CProgramme::Settle(const State& before) {
  DropWhatIsOver();
  if (NeedsClock(state_) != NeedsClock(before)) {
    Do(Commands::WatchClock{NeedsClock(state_)});
  }
  if (ShownOf(state_) != ShownOf(before)) {
    Do(Commands::ShowState());
  }
}

void CProgramme::Want(const Play& play) {
  EndCycle();
  state_.on_its_way = play;
  if (play.by != PlayOrigin::DefaultView) {
    state_.failed.reset();
  }
}

void CProgramme::Fetch(const Play& play) {
  Want(play);
  state_.fetches.insert(play.code);
  Do(Commands::FetchPlan{play.code, play.by});
}

void CProgramme::On(const Events::PlanWanted& wanted) {
  Fetch({wanted.code, wanted.by, {}, wanted.place});
}

void CProgramme::On(const Events::PanelFetches& fetch) {
  if (!IsOnItsWay(fetch.code) || state_.on_its_way->by == PlayOrigin::DefaultView) {
    Want({fetch.code, PlayOrigin::User});
  }
  state_.fetches.insert(fetch.code);
}

// Answers may come in any order; what was asked for last wins.
void CProgramme::On(const Events::PlanCame& came) {
  if (IsOnItsWay(came.plan.index_code)) {
    const Play play = *state_.on_its_way;
    Show(came.plan, play.by, play.place);
  }
}

// It may have failed; but the plan may have been asked for once more since.
void CProgramme::On(const Events::FetchOver& fetch) {
  const auto found = state_.fetches.find(fetch.code);
  if (found == state_.fetches.end()) {
    return;
  }
  state_.fetches.erase(found);
  if (!IsOnItsWay(fetch.code) || state_.fetches.count(fetch.code) > 0) {
    return;
  }
  const Play play = *std::exchange(state_.on_its_way, std::nullopt);
  if (!fetch.failure) {
    return;
  }
  if (!fetch.failure->is_said && !IsRetry(play.by)) {
    Do(Commands::SayFailure{Reason::PlanFailed, {fetch.failure->text}});
  }
  Fail({play, std::nullopt, fetch.failure->text, MayPass(fetch.failure->kind)});
}

void CProgramme::On(const Events::PlanRenewed& renewed) {
  if (state_.on_wall && state_.on_wall->code == renewed.plan.index_code) {
    state_.on_wall->name = StringToQString(renewed.plan.name);
  }
}

// What was about to open by itself on the empty wall comes too late.
void CProgramme::On(const Events::WallArranged& arranged) {
  state_.is_arranged = arranged.is_own;
  if (!arranged.is_own) {
    return;
  }
  if (state_.on_its_way && StartsByItself(state_.on_its_way->by)) {
    state_.on_its_way.reset();
  }
  if (state_.cycle && !state_.on_wall && StartsByItself(state_.cycle->by)) {
    EndCycle();
  }
}

void CProgramme::On(const Events::ArrangementWanted& wanted) {
  EndCycle();
  DropDoubtful();
  state_.on_its_way.reset();
  state_.stopped.reset();
  state_.failed.reset();
  state_.on_wall.reset();
  if (wanted.arrangement.HasPlan()) {
    const Events::Plan& plan = wanted.arrangement.PlanAsFetched();
    state_.on_wall = Play{plan.index_code, PlayOrigin::User, StringToQString(plan.name)};
  }
  Do(Commands::ShowArrangement{wanted.arrangement, wanted.place});
}

void CProgramme::Show(const Events::Plan& plan, PlayOrigin by, const WallPlace& place) {
  if (!StartsByItself(by)) {
    DropDoubtful();
  }
  // What the user wants and is still on its way, plan or group, takes the place of a timed plan.
  if (by != PlayOrigin::Automatic || (state_.on_its_way && StartsByItself(state_.on_its_way->by))) {
    state_.on_its_way.reset();
  }
  if (by == PlayOrigin::Automatic && state_.cycle && StartsByItself(state_.cycle->by)) {
    EndCycle();
  }
  state_.on_wall = Play{plan.index_code, by, StringToQString(plan.name)};
  Do(Commands::ShowPlan{plan, by, place});
}

}  // namespace TarnClient
