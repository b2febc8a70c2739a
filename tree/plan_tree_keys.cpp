#include "plan_tree_keys.h"

#include <QCoreApplication>

namespace TarnPlanView {

QList<MarUIControl::KeyEntry> PlanTreeKeys() {
  const auto text = [](const char* source) { return QCoreApplication::translate("TarnPlanView::PlanKeys", source); };
  const QString group = text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "In the tree"));
  return {
      {group, {Qt::Key_Return}, text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Play the plan, or open the group"))},
      {group,
       {Qt::Key_Right, Qt::Key_Left},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Open and close the group"))},
      {group, {Qt::Key_Asterisk}, text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Open all that is loaded below"))},
      {group,
       {Qt::Key_Menu, Qt::SHIFT | Qt::Key_F10},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Menu of the row"))},
  };
}

}  // namespace TarnPlanView
