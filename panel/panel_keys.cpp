#include "panel_keys.h"

#include "editor_keys.h"
#include "panel_actions.h"
#include "plan_tree_keys.h"
#include "search_keys.h"
#include "share_keys.h"

namespace TarnPlanView {

QList<MarUIControl::KeyEntry> PanelKeys() {
  return CPanelActions::Keys() + PlanTreeKeys() + SearchKeys() + CShareKeys::Keys() + EditorKeys();
}

}  // namespace TarnPlanView
