#include "plan_commands.h"

#include <QCoreApplication>

#include "item_type.h"

namespace TarnPlanView {

using view_plugin_protocol::AddRight;
using view_plugin_protocol::DeleteRight;
using view_plugin_protocol::EditRight;

namespace {

bool IsPublic(int item_type) {
  return item_type >= PublicRootItem && item_type <= PublicLeafItem;
}

// A button of the bar is off: for want of a right, or for something that needs no words.
CommandState Granted(bool granted, bool has_right, Refusal no_right, const PanelSituation& situation) {
  CommandState state;
  state.enabled = state.button_enabled = granted;
  if (!granted && !has_right && IsPublic(situation.item_type)) {
    state.reason = no_right;
  }
  return state;
}

// A search or the editor has taken the row away that the command would be about.
void Hold(CommandState& state, const PanelSituation& situation) {
  const bool searching = situation.page == PanelPage::Search;
  if (searching || situation.editing) {
    state.enabled = state.button_enabled = false;
  }
  if (searching && !state.enabled) {
    state.reason = Refusal::SearchShown;
  }
}

// The wait page leaves the button as it was, but there is no row in sight that it could be about.
void HoldWhileWaiting(CommandState& state, const PanelSituation& situation) {
  state.enabled = state.enabled && situation.page != PanelPage::Wait;
}

// A hit is edited by what it is itself; the button stays on where the row behind the hits has left it on.
CommandState EditHit(const PanelSituation& situation) {
  CommandState state;
  const int hit = situation.item_type;
  const bool allowed = hit == OwnPlanItem || (hit == PublicPlanItem && situation.rights.Has(EditRight));
  state.enabled = allowed && !situation.editing;
  state.button_enabled = state.enabled || (situation.grants.edit && !situation.editing);
  if (!allowed && !situation.editing) {
    state.reason = hit > 0 ? Refusal::NoEditRight : Refusal::NothingMarked;
  }
  return state;
}

CommandState Edit(const PanelSituation& situation) {
  if (situation.page == PanelPage::Search) {
    return EditHit(situation);
  }
  const bool granted = situation.grants.edit && !situation.editing;
  CommandState state = Granted(granted, situation.rights.Has(EditRight), Refusal::NoEditRight, situation);
  HoldWhileWaiting(state, situation);
  return state;
}

CommandState Delete(const PanelSituation& situation) {
  CommandState state =
      Granted(situation.grants.remove, situation.rights.Has(DeleteRight), Refusal::NoDeleteRight, situation);
  Hold(state, situation);
  HoldWhileWaiting(state, situation);
  return state;
}

CommandState AddGroup(const PanelSituation& situation) {
  const bool granted = situation.grants.add_group && !situation.between_users;
  CommandState state = Granted(granted, situation.rights.Has(AddRight), Refusal::NoAddRight, situation);
  Hold(state, situation);
  return state;
}

CommandState AddPlan(const PanelSituation& situation) {
  const bool granted = situation.grants.add_plan && !situation.between_users && !situation.opening;
  CommandState state = Granted(granted, situation.rights.Has(AddRight), Refusal::NoAddRight, situation);
  if (!granted && situation.page == PanelPage::Search) {
    state.reason = Refusal::SearchShown;
  }
  return state;
}

// Also of own plans: the copy comes into trees that are not the sharer's, so sharing takes the right to add.
CommandState Share(const PanelSituation& situation) {
  CommandState state;
  state.enabled = state.button_enabled = situation.rights.Has(AddRight);
  if (!situation.rights.Has(AddRight)) {
    state.reason = Refusal::NoShareRight;
  }
  return state;
}

// Only hits have it: a row of the tree is there already.
CommandState ShowInTree(const PanelSituation& situation) {
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
  states[PlanCommand::AddGroup] = AddGroup(situation);
  states[PlanCommand::AddPlan] = AddPlan(situation);
  states[PlanCommand::Edit] = Edit(situation);
  states[PlanCommand::Delete] = Delete(situation);
  states[PlanCommand::Share] = Share(situation);
  const bool is_plan = IsPlanItem(situation.item_type);
  states[PlanCommand::Play].shown = is_plan;
  states[PlanCommand::Share].shown = is_plan;
  states[PlanCommand::CreationInfo].shown = is_plan && situation.switches.creation_info;
  states[PlanCommand::Cycle].shown = IsGroupItem(situation.item_type) && situation.switches.group_cycle;
  states[PlanCommand::ShowInTree] = ShowInTree(situation);
  states[PlanCommand::Search].shown = situation.switches.enable_search;
  return states;
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
      return QCoreApplication::translate("TarnPlanView::CViewExternWidget", "You lack the right to share plans.");
    case Refusal::SearchShown:
      return QCoreApplication::translate("TarnPlanView::CViewExternWidget", "Leave the search first.");
    case Refusal::NothingMarked:
      return QCoreApplication::translate("TarnPlanView::CViewExternWidget", "No plan is marked.");
    case Refusal::Loading:
      return QCoreApplication::translate("TarnPlanView::CViewExternWidget", "The plans are still being loaded.");
    case Refusal::InNoTree:
      return QCoreApplication::translate("TarnPlanView::CViewExternWidget", "No tree here shows this plan.");
  }
  return QString();
}

}  // namespace TarnPlanView
