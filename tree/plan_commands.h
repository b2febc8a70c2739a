#pragma once

#include <QString>
#include <array>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "TarnUIDataController/msg_type.h"
#include "plan_rules/rights.h"

namespace TarnPlanView {

/// What a user can ask for: by the panel's bar, by a menu of a row, or by a key.
enum class PlanCommand { AddGroup, AddPlan, Edit, Delete, Search, Play, Share, Cycle, CreationInfo, ShowInTree };
constexpr int kPlanCommands = 10;

/// The command of a menu entry; none for numbers that belong to others.
std::optional<PlanCommand> CommandOf(tarn_ui_data_controller::MsgType type);

/// Which of the bar's four buttons the rows that were current so far have left on.
struct BarGrants {
  bool add_group = false, add_plan = false, edit = false, remove = false;
};

/// What the panel shows below its bar.
enum class PanelPage { Tree, Search, Wait };

/// All that decides which commands there are.
struct PanelSituation {
  int item_type = 0;  // of the row that commands are about; while hits are shown, of the marked one
  BarGrants grants;
  view_plugin_protocol::Rights rights;
  view_plugin_protocol::GetPlanConfigResponse switches;
  PanelPage page = PanelPage::Tree;
  bool editing = false;        // the plan editor is open
  bool opening = false;        // a new plan is being opened in it
  bool between_users = false;  // the rows are still the last user's
  bool loading = false;        // the tree has no rows yet
  bool in_no_tree = false;     // the marked hit is of a family whose tree is not shown anywhere
};

/// Why a command, or its button, is not enabled.
enum class Refusal {
  None,
  NoAddRight,
  NoEditRight,
  NoDeleteRight,
  NoShareRight,
  SearchShown,
  NothingMarked,
  NoRow,
  Root,
  PlansStandInGroups,
  Received,
  EditorOpen,
  EditorOpening,
  Loading,
  InNoTree,
};

/// For the user; empty for none.
QString TextOf(Refusal refusal);

struct CommandState {
  bool shown = true;
  /// Whether the command does anything. Menus show it.
  bool enabled = true;
  /// What its button shows: as `enabled`, except for buttons that a search or a wait leaves as they were.
  bool button_enabled = true;
  Refusal reason = Refusal::None;
};

/// One state for each command.
class CommandStates {
 public:
  CommandState& operator[](PlanCommand command) { return states_[static_cast<size_t>(command)]; }
  const CommandState& operator[](PlanCommand command) const { return states_[static_cast<size_t>(command)]; }

 private:
  std::array<CommandState, kPlanCommands> states_;
};

/// The four buttons once a row of this type has become current. Own plans need no rights; received ones only ever take
/// new groups and leave the rest as it was.
BarGrants GrantsAfter(const BarGrants& before, int item_type, const view_plugin_protocol::Rights& rights,
                      bool under_root);

/// The one place that says which commands are shown, which are enabled, and why the others are not.
CommandStates StatesOf(const PanelSituation& situation);
/// Why nothing new can be made at the situation's row, wherever that is shown: as if it were the tree's current one.
/// `command`: AddGroup or AddPlan.
Refusal WhyNothingNew(PlanCommand command, PanelSituation situation, bool under_root);

}  // namespace TarnPlanView
