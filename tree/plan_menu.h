#pragma once

#include "TarnUIDataController/popup_menu.h"

namespace TarnPlanView {

/// The menu of commands about a row, with the entries that the switches allow, in their order. Belongs to `parent`.
tarn_ui_data_controller::CPopupMenu* MakePlanMenu(QWidget* parent);

}  // namespace TarnPlanView
