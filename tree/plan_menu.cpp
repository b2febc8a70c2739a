#include "plan_menu.h"

#include "plan_view_tree.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using tarn_ui_data_controller::CPopupMenu;

namespace {

constexpr tarn_ui_data_controller::MsgType kEntries[] = {
    tarn_ui_data_controller::PlayVideo, tarn_ui_data_controller::Edit,       tarn_ui_data_controller::Delete,
    tarn_ui_data_controller::Share,     tarn_ui_data_controller::GroupCycle, tarn_ui_data_controller::CreationInfo};

// The keys of the rows that the menu is about; in a menu they only show.
void ShowKeys(CPopupMenu& menu) {
  using namespace tarn_ui_data_controller;
  const QPair<MsgType, Qt::Key> keys[] = {{PlayVideo, Qt::Key_Return}, {Edit, Qt::Key_F2}, {Delete, Qt::Key_Delete}};
  for (const auto& [type, key] : keys) {
    menu.MenuItem(type)->setShortcut(key);
    menu.MenuItem(type)->setShortcutVisibleInContextMenu(true);
  }
}

}  // namespace

CPopupMenu* MakePlanMenu(QWidget* parent) {
  using namespace tarn_ui_data_controller;
  auto* menu = new CPopupMenu(parent);
  menu->AddMenuItem(PlayVideo, CPlanViewTree::tr("PlayVideo"));
  menu->AddMenuItem(Edit, CPlanViewTree::tr("Edit"));
  menu->AddMenuItem(Delete, CPlanViewTree::tr("Delete"));
  menu->AddMenuItem(Share, CPlanViewTree::tr("Share"));
  const auto& config = CViewConfigManager::Instance();
  if (config.IsSupportPlanGroupCycle()) {
    menu->AddMenuItem(GroupCycle, CPlanViewTree::tr("Orbis-ControlClient.7776cb5a28d14f4abda07c1e49560e50.button"));
  }
  if (config.ShowCreationInfo()) {
    menu->AddMenuItem(CreationInfo, CPlanViewTree::tr("Orbis-ControlClient.fd0fcaae405246e29b52f6750fb70a76.msg"));
  }
  ShowKeys(*menu);
  return menu;
}

void ShowEntries(CPopupMenu& menu, const CommandStates& states, const QSet<int>& hidden) {
  for (const auto type : kEntries) {
    menu.SetMenuItemVisible(type, !hidden.contains(type) && states[*CommandOf(type)].shown);
  }
}

void EnableEntries(CPopupMenu& menu, const CommandStates& states) {
  using namespace tarn_ui_data_controller;
  for (const auto type : {Edit, Delete, Share}) {  // the host may have disabled others
    const CommandState& state = states[*CommandOf(type)];
    menu.SetMenuItemEnabled(type, state.enabled, TextOf(state.reason));
  }
}

}  // namespace TarnPlanView
