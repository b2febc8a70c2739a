#pragma once

#include <QSet>

#include "TarnUIDataController/popup_menu.h"
#include "plan_commands.h"

namespace TarnPlanView {

/// The menu of commands about a row, with the entries that the switches allow, in their order. Belongs to `parent`.
tarn_ui_data_controller::CPopupMenu* MakePlanMenu(QWidget* parent);
/// Shows the entries that `states` shows, but for those of `hidden`, a MsgType each.
void ShowEntries(tarn_ui_data_controller::CPopupMenu& menu, const CommandStates& states, const QSet<int>& hidden);
/// Enables the entries to edit, delete and share as `states` says, or disables them with the reason as tool tip.
void EnableEntries(tarn_ui_data_controller::CPopupMenu& menu, const CommandStates& states);

}  // namespace TarnPlanView
