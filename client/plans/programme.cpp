#include "plans/programme.h"

#include <QTime>
#include <algorithm>
#include <tuple>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "MarUIControl/string_conversion.h"
#include "plan_rules/families.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using Reason = Commands::SayFailure::Reason;

namespace {

QDateTime EndOf(const Events::Plan& plan, const QDate& day) {
  const QTime time = QTime::fromString(StringToQString(plan.end_time));
  if (!time.isValid()) {
    return QDateTime();
  }
  return QDateTime(day, time);
}

bool IsTimedAlike(const Events::Plan& one, const Events::Plan& other) {
  return std::tie(one.auto_run, one.start_time, one.end_time) ==
         std::tie(other.auto_run, other.start_time, other.end_time);
}

bool MayPass(int32_t error_kind) {
  return error_kind == view_plugin_protocol::Unavailable || error_kind == view_plugin_protocol::UnknownFailure;
}

bool NeedsClock(const CProgramme::State& state) {
  return state.timed_end || state.doubtful || state.ended;
}

bool HasBegun(const CProgramme::Cycle& cycle) {
  return cycle.last.position >= 0;
}

bool IsTimed(const std::optional<CProgramme::Play>& play) {
  return play && play->by == PlayOrigin::Automatic;
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
    state_.failed.reset();
    state_.failures = 0;
  }
  if (state_.on_wall && !IsOnWall(PlayOrigin::DefaultView)) {
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
  Fetch({wanted.code, wanted.by});
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

// A wall with something on it keeps that. What opens by itself is also tried again by itself, since no one may be
// there.
void CProgramme::Fail(const Failed& failed) {
  if (IsBusy()) {
    return;
  }
  state_.failed = failed;
  if (failed.play.by == PlayOrigin::DefaultView && failed.may_pass) {
    state_.default_view_stands = true;
    Do(Commands::AwaitNextPlan{true, ++state_.failures});
  }
}

void CProgramme::On(const Events::TryAgainWanted&) {
  const std::optional<Failed> failed = std::exchange(state_.failed, std::nullopt);
  if (!failed) {
    return;
  }
  if (failed->play.by == PlayOrigin::DefaultView) {
    state_.failures = 0;
    OpenDefaultViewAgain(*failed);
  } else if (failed->cycle) {
    GoOn(*failed->cycle);
  } else {
    Fetch(failed->play);
  }
}

void CProgramme::On(const Events::PlanRenewed& renewed) {
  if (state_.on_wall && state_.on_wall->code == renewed.plan.index_code) {
    state_.on_wall->name = StringToQString(renewed.plan.name);
  }
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

// A stop by the user also says that he has seen what has ended.
void CProgramme::On(const Events::StopWanted& wanted) {
  if (wanted.may_return) {
    state_.ended.reset();
  }
  if (state_.on_wall && wanted.may_return) {
    KeepStopped(wanted.place);
  }
  Clear();
}

// A cycle goes on with the plan that was on, in it or instead of it.
void CProgramme::KeepStopped(const WallPlace& place) {
  Stopped stopped{*state_.on_wall};
  stopped.play.place = place;
  stopped.default_view_stood = state_.default_view_stands;
  if (state_.cycle && HasBegun(*state_.cycle)) {
    stopped.cycle = state_.cycle;
    stopped.cycle->place = place;
  }
  state_.stopped = stopped;
}

void CProgramme::On(const Events::PlayAgainWanted&) {
  const std::optional<Stopped> stopped = std::exchange(state_.stopped, std::nullopt);
  if (!stopped) {
    return;
  }
  state_.default_view_stands = stopped->default_view_stood;
  if (stopped->cycle) {
    GoOn(*stopped->cycle);
  } else {
    Fetch(stopped->play);
  }
}

void CProgramme::On(const Events::OfferOver&) {
  state_.stopped.reset();
}

// The helper announces a timed plan once a day, and the one in doubt may be this user's.
void CProgramme::On(const Events::UserSwitched&) {
  state_.is_new_user = true;
  const std::optional<Doubtful> doubtful = state_.doubtful;
  Clear();
  state_.stopped.reset();
  state_.ended.reset();
  state_.doubtful = doubtful;
  AskIfSeen();
}

// Stopping also takes back what was wanted and what is about to open by itself. The end of the timed plan stays known,
// for the one that may come next.
void CProgramme::Clear() {
  state_.on_its_way.reset();
  state_.asks_default_view = state_.default_view_stands = false;
  state_.failed.reset();
  state_.failures = 0;
  DropDoubtful();
  EndCycle();
  Do(Commands::AwaitNextPlan{false});
  EmptyWall();
}

void CProgramme::EmptyWall() {
  if (IsOnWall(PlayOrigin::Automatic)) {
    Do(Commands::ForgetTimedPlan());
  }
  if (state_.on_wall) {
    state_.on_wall.reset();
    Do(Commands::EmptyWall());
  }
}

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
  AskForTurn(Cycle::Awaits::TurnByUser, HasBegun(cycle) ? 0 : 1);
}

void CProgramme::AskForTurn(Cycle::Awaits awaits, int step) {
  state_.cycle->awaits = awaits;
  Do(Commands::FetchTurn{state_.cycle->code, state_.cycle->last, step});
}

void CProgramme::On(const Events::SecondsPerPlanChosen& chosen) {
  if (state_.cycle) {
    state_.cycle->seconds_per_plan = chosen.seconds;
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
  if (!HasBegun(*state_.cycle) || !state_.on_wall) {
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

void CProgramme::On(const Events::DefaultViewWanted&) {
  state_.failures = 0;
  AskDefaultView();
}

void CProgramme::AskDefaultView() {
  state_.asks_default_view = true;
  Do(Commands::AskDefaultView());
}

// What plays by then keeps it away; after a timed plan it is asked for again.
bool CProgramme::MayOpenDefaultView() {
  if (!std::exchange(state_.asks_default_view, false)) {
    return false;
  }
  const bool may_open = !IsBusy();
  state_.default_view_stands = state_.default_view_stands || may_open || IsOnWall(PlayOrigin::Automatic);
  return may_open;
}

void CProgramme::On(const Events::DefaultPlanKnown& known) {
  if (MayOpenDefaultView() && !known.code.empty()) {
    On(Events::PlanWanted{known.code, PlayOrigin::DefaultView});
  }
}

void CProgramme::On(const Events::DefaultGroupKnown& known) {
  if (!MayOpenDefaultView() || known.group.code.empty()) {
    return;
  }
  if (known.group.may_cycle) {
    BeginCycle(known.group, PlayOrigin::DefaultView);
  } else {
    Do(Commands::SayFailure{Reason::DefaultGroupSwitchedOff});
  }
}

void CProgramme::On(const Events::DefaultViewNone&) {
  state_.asks_default_view = state_.default_view_stands = false;
  state_.failed.reset();
}

void CProgramme::On(const Events::DefaultViewUnknown& unknown) {
  if (!std::exchange(state_.asks_default_view, false)) {
    return;
  }
  const Events::Failure& failure = unknown.failure;
  if (!failure.is_said && !IsRetry(PlayOrigin::DefaultView)) {
    Do(Commands::SayFailure{Reason::PlanFailed, {failure.text}});
  }
  Fail({{{}, PlayOrigin::DefaultView}, std::nullopt, failure.text, MayPass(failure.kind)});
}

// The helper keeps the plan that it knows while it gets no answer: after a switch of user that may be one which only
// the last user can see.
void CProgramme::On(const Events::TimedPlanBegins& begins) {
  DropDoubtful();
  if (state_.on_wall && !StartsByItself(state_.on_wall->by)) {
    return;
  }
  if (state_.is_new_user && begins.plan.type != view_plugin_protocol::PublicFamily) {
    state_.doubtful = Doubtful{begins.plan, EndOf(begins.plan, now_.date())};
    AskIfSeen();
  } else {
    BeginTimed(begins.plan);
  }
}

// No end is announced when the plan vanishes in mid-run or was stopped, so it is kept here. The clock is looked at
// again and again, since it may be set, or the computer sleep, in between.
void CProgramme::BeginTimed(const Events::Plan& plan) {
  Show(plan, PlayOrigin::Automatic, {});
  state_.timed_end.reset();
  const QDateTime end = EndOf(plan, now_.date());
  if (end.isValid()) {
    state_.timed_end = TimedEnd{end};
  }
}

void CProgramme::On(const Events::TimedPlanEnds&) {
  DropDoubtful();
  EndTimed();
}

// The next timed plan may be due, long before the helper asks by itself. What is wanted meanwhile goes on, but not the
// timed plan itself, which was stopped and is fetched again: nothing would end it.
void CProgramme::EndTimed() {
  const std::optional<TimedEnd> end = std::exchange(state_.timed_end, std::nullopt);
  Do(Commands::LookForTimedPlan());
  if (state_.stopped && state_.stopped->play.by == PlayOrigin::Automatic) {
    state_.stopped.reset();
  }
  if (state_.failed && state_.failed->play.by == PlayOrigin::Automatic) {
    state_.failed.reset();
  }
  std::optional<Play> over = state_.on_wall;
  if (IsTimed(state_.on_its_way)) {
    over = std::exchange(state_.on_its_way, std::nullopt);
  }
  if (IsTimed(over)) {
    state_.ended = Ended{over->name, std::min(now_, end.value_or(TimedEnd{now_}).at)};
    EmptyWall();
    Do(Commands::AwaitNextPlan());
  }
}

void CProgramme::On(const Events::ClockTicked&) {
  // The time alone, without the day, says when it was for a day only.
  if (state_.ended && now_ >= state_.ended->at.addDays(1)) {
    state_.ended.reset();
  }
  // The helper, which looks as often, goes first at the end: it forgets its plan by announcing it.
  if (state_.timed_end) {
    const bool is_past = now_ >= state_.timed_end->at;
    if (std::exchange(state_.timed_end->is_past, is_past) && is_past) {
      EndTimed();
    }
  }
  if (state_.doubtful && now_ >= state_.doubtful->end) {
    DropDoubtful();
  } else if (state_.doubtful && state_.doubtful->question == Doubtful::Question::Failed) {
    AskIfSeen();
  }
}

void CProgramme::AskIfSeen() {
  if (state_.doubtful) {
    state_.doubtful->question = Doubtful::Question::Asked;
    Do(Commands::AskIfSeen{state_.doubtful->plan.index_code});
  }
}

void CProgramme::DropDoubtful() {
  if (state_.doubtful) {
    state_.doubtful.reset();
    Do(Commands::DropQuestion());
  }
}

// A plan that is not this user's may be the next one's; with other times it is announced again.
void CProgramme::On(const Events::SeenAnswered& answer) {
  if (!state_.doubtful) {
    return;
  }
  if (now_ >= state_.doubtful->end) {
    DropDoubtful();
  } else if (answer.plan.ok) {
    const Doubtful doubtful = *std::exchange(state_.doubtful, std::nullopt);
    if (IsTimedAlike(doubtful.plan, answer.plan.response)) {
      state_.is_new_user = false;
      On(Events::TimedPlanBegins{answer.plan.response});
    }
  } else if (answer.plan.response.error_kind == view_plugin_protocol::Gone) {
    state_.doubtful->question = Doubtful::Question::NotSeen;
  } else {
    state_.doubtful->question = Doubtful::Question::Failed;
  }
}

// What is on its way may fail yet, so it is waited for. The default view is asked for again, since another one may have
// been chosen or its plan been deleted in the meantime.
void CProgramme::On(const Events::NextPlanDue&) {
  if (state_.on_wall) {
    return;
  }
  if (IsBusy()) {
    Do(Commands::AwaitNextPlan());
  } else if (state_.default_view_stands && !state_.asks_default_view) {
    OpenDefaultViewAgain(state_.failed.value_or(Failed()));
  }
}

// A cycle that has stood on the wall goes on where it was.
void CProgramme::OpenDefaultViewAgain(const Failed& failed) {
  const bool goes_on = failed.play.by == PlayOrigin::DefaultView && failed.cycle && HasBegun(*failed.cycle);
  if (goes_on) {
    GoOn(*failed.cycle);
  } else {
    AskDefaultView();
  }
}

}  // namespace TarnClient
