#pragma once

#include <QStringList>
#include <string>
#include <variant>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plans/cycle_turn.h"
#include "plans/play_origin.h"
#include "wall/arrangement.h"
#include "wall/wall_place.h"

// What the programme wants to be done. Plain values.
namespace TarnClient::Commands {

/// Events::FetchOver comes once for each.
struct FetchPlan {
  std::string code;
  PlayOrigin by = PlayOrigin::User;
};
struct ShowPlan {
  view_plugin_protocol::GetPlanDetailResponse plan;
  PlayOrigin by = PlayOrigin::User;
  WallPlace place = {};
};
/// As it was left: nothing is fetched, and nothing counts as played.
struct ShowArrangement {
  CArrangement arrangement;
  WallPlace place = {};
};
/// Nothing plays any more.
struct EmptyWall {};

/// In place of a fetch that is under way.
struct FetchTurn {
  std::string group_code;
  CycleTurn last;
  int step = 1;  // 0: the plan of the last turn once more
};
struct DropTurn {};
/// What is on the wall stays for a turn of the cycle.
struct BeginTurn {
  int seconds = 0;
  bool is_held = false;
  int page = 0;  // where it goes on; 0: where it is
};
/// No other plan came: the one on the wall stays for so long.
struct Stay {
  int seconds = 0;
};
struct EndTurns {};

/// Answered by one of Events::DefaultPlanKnown, DefaultGroupKnown, DefaultViewNone and DefaultViewUnknown.
struct AskDefaultView {};

/// Answered by Events::SeenAnswered.
struct AskIfSeen {
  std::string code;
};
struct DropQuestion {};
/// The next timed plan may be due now.
struct LookForTimedPlan {};
/// The timed plan that was announced is not shown any more.
struct ForgetTimedPlan {};
/// Events::ClockTicked comes once a second.
struct WatchClock {
  bool on = true;
};
/// Events::NextPlanDue comes in a moment; an earlier wait counts no more.
struct AwaitNextPlan {
  bool on = true;
  int failures = 0;  // a service that does not answer is asked less and less often
};

/// Something has changed that the user is shown of the state.
struct ShowState {};
struct SayFailure {
  enum class Reason {
    GroupsSwitchedOff,
    DefaultGroupSwitchedOff,
    NoPlans,
    GroupFailed,
    TurnFailed,
    PlansSkipped,
    PlanFailed
  };
  Reason reason = Reason::NoPlans;
  QStringList details = {};  // the service's text, or names of plans
};

}  // namespace TarnClient::Commands

namespace TarnClient {

using ProgrammeCommand =
    std::variant<Commands::FetchPlan, Commands::ShowPlan, Commands::ShowArrangement, Commands::EmptyWall,
                 Commands::FetchTurn, Commands::DropTurn, Commands::BeginTurn, Commands::Stay, Commands::EndTurns,
                 Commands::AskDefaultView, Commands::AskIfSeen, Commands::DropQuestion, Commands::LookForTimedPlan,
                 Commands::ForgetTimedPlan, Commands::WatchClock, Commands::AwaitNextPlan, Commands::ShowState,
                 Commands::SayFailure>;
using ProgrammeCommands = std::vector<ProgrammeCommand>;

}  // namespace TarnClient
