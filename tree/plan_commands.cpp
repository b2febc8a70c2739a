#include "plan_commands.h"

#include <QCoreApplication>

#include "item_type.h"

namespace TarnPlanView {

using view_plugin_protocol::AddRight;
using view_plugin_protocol::DeleteRight;
using view_plugin_protocol::EditRight;

namespace {

class PanelTexts {
  Q_DECLARE_TR_FUNCTIONS(TarnPlanView::CViewExternWidget)
};

bool IsPublic(int item_type) {
  return item_type >= PublicRootItem && item_type <= PublicLeafItem;
}

bool IsReceived(int item_type) {
  return item_type >= ReceivedRootItem && item_type <= ReceivedLeafItem;
}

bool IsRoot(int item_type) {
  return item_type == PublicRootItem || item_type == OwnRootItem || item_type == ReceivedRootItem;
}

Refusal LackOfRight(view_plugin_protocol::Right right) {
  switch (right) {
    case AddRight:
      return Refusal::NoAddRight;
    case EditRight:
      return Refusal::NoEditRight;
    case DeleteRight:
      return Refusal::NoDeleteRight;
  }
  return Refusal::None;
}

// Why a row has left a button off that takes this right.
Refusal RefusalOfRow(const PanelSituation& situation, view_plugin_protocol::Right right) {
  if (IsPublic(situation.item_type) && !situation.rights.Has(right)) {
    return LackOfRight(right);
  }
  if (IsReceived(situation.item_type)) {
    return Refusal::Received;
  }
  if (!IsRoot(situation.item_type)) {
    return Refusal::NoRow;
  }
  return right == AddRight ? Refusal::PlansStandInGroups : Refusal::Root;
}

// Why a command is off: the page in sight comes before the row, for on another one the same row may have it, but after
// a right that is missing on each of them.
Refusal WhyOff(const PanelSituation& situation, bool granted, view_plugin_protocol::Right right) {
  if (situation.between_users || situation.page == PanelPage::Wait) {
    return Refusal::Loading;
  }
  const bool lacks_right = IsPublic(situation.item_type) && !situation.rights.Has(right);
  if (situation.page == PanelPage::Search && !lacks_right) {
    return Refusal::SearchShown;
  }
  if (!granted || lacks_right) {
    return RefusalOfRow(situation, right);
  }
  return situation.editing ? Refusal::EditorOpen : Refusal::EditorOpening;
}

CommandState OnOrOff(bool enabled, const PanelSituation& situation, bool granted, view_plugin_protocol::Right right) {
  CommandState state;
  state.enabled = state.button_enabled = enabled;
  if (!enabled) {
    state.reason = WhyOff(situation, granted, right);
  }
  return state;
}

// The wait page leaves the button as it was, but there is no row in sight that it could be about.
void HoldWhileWaiting(CommandState& state, const PanelSituation& situation) {
  if (situation.page == PanelPage::Wait) {
    state.enabled = false;
    state.reason = Refusal::Loading;
  }
}

// A search or the editor has taken the row away that the command would be about.
bool IsRowInSight(const PanelSituation& situation) {
  return situation.page != PanelPage::Search && !situation.editing;
}

Refusal WhyHitIsNotEdited(const PanelSituation& situation) {
  if (situation.item_type <= 0) {
    return Refusal::NothingMarked;
  }
  if (IsReceived(situation.item_type)) {
    return Refusal::Received;
  }
  return situation.editing ? Refusal::EditorOpen : Refusal::NoEditRight;
}

// A hit is edited by what it is itself; the button stays on where the row behind the hits has left it on.
CommandState EditHitState(const PanelSituation& situation) {
  CommandState state;
  const int hit = situation.item_type;
  const bool allowed = hit == OwnPlanItem || (hit == PublicPlanItem && situation.rights.Has(EditRight));
  state.enabled = allowed && !situation.editing;
  state.button_enabled = state.enabled || (situation.grants.edit && !situation.editing);
  if (!state.enabled) {
    state.reason = WhyHitIsNotEdited(situation);
  }
  return state;
}

CommandState EditState(const PanelSituation& situation) {
  if (situation.page == PanelPage::Search) {
    return EditHitState(situation);
  }
  const bool granted = situation.grants.edit;
  CommandState state = OnOrOff(granted && !situation.editing, situation, granted, EditRight);
  HoldWhileWaiting(state, situation);
  return state;
}

CommandState DeleteState(const PanelSituation& situation) {
  const bool granted = situation.grants.remove;
  CommandState state = OnOrOff(granted && IsRowInSight(situation), situation, granted, DeleteRight);
  HoldWhileWaiting(state, situation);
  return state;
}

CommandState AddGroupState(const PanelSituation& situation) {
  const bool granted = situation.grants.add_group && !situation.between_users;
  return OnOrOff(granted && IsRowInSight(situation), situation, granted, AddRight);
}

CommandState AddPlanState(const PanelSituation& situation) {
  const bool granted = situation.grants.add_plan && !situation.between_users;
  return OnOrOff(granted && !situation.opening, situation, granted, AddRight);
}

// Also of own plans: the copy comes into trees that are not the sharer's, so sharing takes the right to add.
CommandState ShareState(const PanelSituation& situation) {
  CommandState state;
  state.enabled = state.button_enabled = situation.rights.Has(AddRight);
  if (!situation.rights.Has(AddRight)) {
    state.reason = Refusal::NoShareRight;
  }
  return state;
}

// Only hits have it: a row of the tree is there already.
CommandState ShowInTreeState(const PanelSituation& situation) {
  CommandState state;
  state.shown = situation.page == PanelPage::Search && IsPlanItem(situation.item_type);
  if (situation.item_type == 0) {
    state.reason = Refusal::NothingMarked;
  } else if (situation.loading) {
    state.reason = Refusal::Loading;
  } else if (situation.in_no_tree) {
    state.reason = Refusal::InNoTree;
  }
  state.enabled = state.button_enabled = state.reason == Refusal::None;
  return state;
}

}  // namespace

std::optional<PlanCommand> CommandOf(tarn_ui_data_controller::MsgType type) {
  switch (type) {
    case tarn_ui_data_controller::CreationInfo:
      return PlanCommand::CreationInfo;
    case tarn_ui_data_controller::PlayVideo:
      return PlanCommand::Play;
    case tarn_ui_data_controller::Delete:
      return PlanCommand::Delete;
    case tarn_ui_data_controller::Edit:
      return PlanCommand::Edit;
    case tarn_ui_data_controller::GroupCycle:
      return PlanCommand::Cycle;
    case tarn_ui_data_controller::Share:
      return PlanCommand::Share;
    default:
      return std::nullopt;
  }
}

BarGrants GrantsAfter(const BarGrants& before, int item_type, const view_plugin_protocol::Rights& rights,
                      bool under_root) {
  switch (item_type) {
    case PublicRootItem:
      return {rights.Has(AddRight), rights.Has(AddRight) && under_root, false, false};
    case OwnRootItem:
      return {true, under_root, false, false};
    case PublicGroupItem:
    case PublicPlanItem:
    case PublicLeafItem:
      return {rights.Has(AddRight), rights.Has(AddRight), rights.Has(EditRight), rights.Has(DeleteRight)};
    case OwnGroupItem:
    case OwnPlanItem:
    case OwnLeafItem:
      return {true, true, true, true};
    case ReceivedRootItem:
    case ReceivedGroupItem:
    case ReceivedPlanItem:
    case ReceivedLeafItem:
      return {true, false, before.edit, before.remove};
    default:
      return before;
  }
}

CommandStates StatesOf(const PanelSituation& situation) {
  CommandStates states;
  states[PlanCommand::AddGroup] = AddGroupState(situation);
  states[PlanCommand::AddPlan] = AddPlanState(situation);
  states[PlanCommand::Edit] = EditState(situation);
  states[PlanCommand::Delete] = DeleteState(situation);
  states[PlanCommand::Share] = ShareState(situation);
  const bool is_plan = IsPlanItem(situation.item_type);
  states[PlanCommand::Play].shown = is_plan;
  states[PlanCommand::Share].shown = is_plan;
  states[PlanCommand::CreationInfo].shown = is_plan && situation.switches.creation_info;
  states[PlanCommand::Cycle].shown = IsGroupItem(situation.item_type) && situation.switches.group_cycle;
  states[PlanCommand::ShowInTree] = ShowInTreeState(situation);
  states[PlanCommand::Search].shown = situation.switches.enable_search;
  return states;
}

Refusal WhyNothingNew(PlanCommand command, PanelSituation situation, bool under_root) {
  situation.page = PanelPage::Tree;
  situation.grants = GrantsAfter(BarGrants(), situation.item_type, situation.rights, under_root);
  return StatesOf(situation)[command].reason;
}

QString TextOf(Refusal refusal) {
  switch (refusal) {
    case Refusal::None:
      return QString();
    case Refusal::NoAddRight:
      return LackOf(AddRight);
    case Refusal::NoEditRight:
      return LackOf(EditRight);
    case Refusal::NoDeleteRight:
      return LackOf(DeleteRight);
    case Refusal::NoShareRight:
      return PanelTexts::tr("You lack the right to share plans.");
    case Refusal::SearchShown:
      return PanelTexts::tr("Leave the search first.");
    case Refusal::NothingMarked:
      return PanelTexts::tr("No plan is marked.");
    case Refusal::NoRow:
      return PanelTexts::tr("Choose a row first.");
    case Refusal::Root:
      return PanelTexts::tr("The top of the tree can be neither edited nor deleted.");
    case Refusal::PlansStandInGroups:
      return PanelTexts::tr("Plans stand in groups. Choose a group first.");
    case Refusal::Received:
      return PanelTexts::tr("Plans that were received cannot be changed.");
    case Refusal::EditorOpen:
      return PanelTexts::tr("Close the plan editor first.");
    case Refusal::EditorOpening:
      return PanelTexts::tr("The plan editor is being opened.");
    case Refusal::Loading:
      return PanelTexts::tr("The plans are still being loaded.");
    case Refusal::InNoTree:
      return PanelTexts::tr("No tree here shows this plan.");
  }
  return QString();
}

}  // namespace TarnPlanView
