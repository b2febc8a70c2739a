#pragma once

#include <QString>
#include <optional>
#include <string>
#include <variant>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/result.h"
#include "plans/cycle_turn.h"
#include "plans/play_origin.h"
#include "wall/arrangement.h"
#include "wall/wall_place.h"

// What happens to the programme. Plain values.
namespace TarnClient::Events {

using Plan = view_plugin_protocol::GetPlanDetailResponse;

/// Somebody wants a plan that still is to be fetched.
struct PlanWanted {
  std::string code;
  PlayOrigin by = PlayOrigin::User;
  WallPlace place = {};  // where it begins
};
/// A panel fetches a plan for the user.
struct PanelFetches {
  std::string code;
};
struct PlanCame {
  Plan plan;
};
struct Failure {
  QString text;  // the service's, for the user
  int32_t kind = view_plugin_protocol::UnknownFailure;
  bool is_said = false;  // by who asked
};
/// One fetch of a plan is over: PlanCame came just before, or it has failed.
struct FetchOver {
  std::string code;
  std::optional<Failure> failure = {};
};
/// The plan on the wall was changed and plays on.
struct PlanRenewed {
  Plan plan;
};
/// What is on the wall is the user's own work: cameras without a plan, or a plan whose windows he has changed.
struct WallArranged {
  bool is_own = true;
};
/// The user wants his own arrangement back, which has left the wall.
struct ArrangementWanted {
  CArrangement arrangement;
  WallPlace place = {};
};

struct Group {
  std::string code;
  QString name;  // empty when it is not known
  int seconds_per_plan = 0;
  bool may_cycle = true;  // groups may be played at all
};
struct GroupWanted {
  Group group;
};
/// The plans of a group get this time from the next turn on.
struct SecondsPerPlanChosen {
  int seconds = 0;
};
/// The plan on the wall has had its time in the cycle.
struct TurnOver {};
/// The user wants the next plan of the cycle (1) or the one before (-1).
struct StepWanted {
  int step = 1;
};
/// The user holds what is on the wall.
struct Held {};
struct TurnCame {
  CycleTurn turn;
  bool is_held = false;  // the turn before, on the wall
};

/// What the user has chosen for the start is to be opened.
struct DefaultViewWanted {};
struct DefaultPlanKnown {
  std::string code;
};
struct DefaultGroupKnown {
  Group group;
};

/// There is none.
struct DefaultViewNone {};
/// The service does not say.
struct DefaultViewUnknown {
  Failure failure;
};

struct TimedPlanBegins {
  Plan plan;
};
struct TimedPlanEnds {};
/// Whether the present user sees a timed plan.
struct SeenAnswered {
  HostCalls::Result<Plan> plan;  // as it is now
};
/// The second look at the clock.
struct ClockTicked {};
/// The pause of Commands::AwaitNextPlan is over.
struct NextPlanDue {};

struct StopWanted {
  WallPlace place = {};    // of what is on the wall
  bool may_return = true;  // false for a plan that is about to go
};
/// A deleted plan stands in its tree again.
struct PlanIsBack {
  std::string code;
};
/// The user wants what he has stopped.
struct PlayAgainWanted {};
/// What was stopped is offered no more.
struct OfferOver {};
/// The user wants what has failed.
struct TryAgainWanted {};
struct UserSwitched {};

}  // namespace TarnClient::Events

namespace TarnClient {

using ProgrammeEvent =
    std::variant<Events::PlanWanted, Events::PanelFetches, Events::PlanCame, Events::FetchOver, Events::PlanRenewed,
                 Events::WallArranged, Events::ArrangementWanted, Events::GroupWanted, Events::SecondsPerPlanChosen,
                 Events::TurnOver, Events::StepWanted, Events::Held, Events::TurnCame, Events::DefaultViewWanted,
                 Events::DefaultPlanKnown, Events::DefaultGroupKnown, Events::DefaultViewNone,
                 Events::DefaultViewUnknown, Events::TimedPlanBegins, Events::TimedPlanEnds, Events::SeenAnswered,
                 Events::ClockTicked, Events::NextPlanDue, Events::StopWanted, Events::PlanIsBack,
                 Events::PlayAgainWanted, Events::OfferOver, Events::TryAgainWanted, Events::UserSwitched>;

}  // namespace TarnClient
