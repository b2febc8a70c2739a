#include "plans/programme.h"

#include <utility>

#include "LyraPluginManager/error_kind.h"

// What goes off the wall, and what comes back: what was stopped or has failed, and the default view.
namespace TarnClient {

using Reason = Commands::SayFailure::Reason;

bool CProgramme::MayPass(int32_t error_kind) {
  return error_kind == view_plugin_protocol::Unavailable || error_kind == view_plugin_protocol::UnknownFailure;
}

// A wall with something on it keeps that. What opens by itself is also tried again by itself, since no one may be
// there; after a timed plan, where that is on the wall.
void CProgramme::Fail(const Failed& failed) {
  const bool retries = failed.play.by == PlayOrigin::DefaultView && failed.may_pass;
  if (IsBusy()) {
    state_.default_view_stands |= retries && IsOnWall(PlayOrigin::Automatic);
    return;
  }
  state_.failed = failed;
  if (retries) {
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

// A stop by the user also says that he has seen what has ended.
void CProgramme::On(const Events::StopWanted& wanted) {
  state_.deleted.reset();
  if (wanted.may_return) {
    state_.ended.reset();
  }
  if (state_.on_wall) {
    std::optional<Stopped>& kept = wanted.may_return ? state_.stopped : state_.deleted;
    kept = WhatPlays(wanted.place);
  }
  Clear();
}

// A cycle goes on with the plan that was on, in it or instead of it.
CProgramme::Stopped CProgramme::WhatPlays(const WallPlace& place) const {
  Stopped stopped{*state_.on_wall};
  stopped.play.place = place;
  stopped.default_view_stood = state_.default_view_stands;
  if (state_.cycle && state_.cycle->HasBegun()) {
    stopped.cycle = state_.cycle;
    stopped.cycle->place = place;
  }
  return stopped;
}

// What has been asked for meanwhile stays.
void CProgramme::On(const Events::PlanIsBack& back) {
  if (!state_.deleted || state_.deleted->play.code != back.code) {
    return;
  }
  const Stopped deleted = *std::exchange(state_.deleted, std::nullopt);
  if (!IsBusy()) {
    PlayBack(deleted);
  }
}

void CProgramme::On(const Events::PlayAgainWanted&) {
  const std::optional<Stopped> stopped = std::exchange(state_.stopped, std::nullopt);
  if (stopped) {
    PlayBack(*stopped);
  }
}

void CProgramme::PlayBack(const Stopped& stopped) {
  state_.default_view_stands = stopped.default_view_stood;
  if (stopped.cycle) {
    GoOn(*stopped.cycle);
  } else {
    Fetch(stopped.play);
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
  state_.deleted.reset();
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

// What is on its way may fail yet, so it is waited for. The default view is asked for again, since another one may have
// been chosen or its plan been deleted in the meantime.
void CProgramme::On(const Events::NextPlanDue&) {
  if (IsWallTaken()) {
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
  const bool goes_on = failed.play.by == PlayOrigin::DefaultView && failed.cycle && failed.cycle->HasBegun();
  if (goes_on) {
    GoOn(*failed.cycle);
  } else {
    AskDefaultView();
  }
}

}  // namespace TarnClient
