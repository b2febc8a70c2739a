#include "search_keys.h"

#include <QCoreApplication>

namespace TarnPlanView {

QList<MarUIControl::KeyEntry> SearchKeys() {
  const auto text = [](const char* source) { return QCoreApplication::translate("TarnPlanView::PlanKeys", source); };
  const QString group = text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "In a search"));
  return {
      {group, {Qt::Key_Return}, text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Search; on a hit: play it"))},
      {group,
       {Qt::CTRL | Qt::Key_Return},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Show the hit in the tree"))},
      {group,
       {Qt::Key_Down, Qt::Key_Up},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "From the field to the hits, and back"))},
      {group,
       {Qt::Key_Down},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "In the empty field: the last searches"))},
      {group, {Qt::Key_F2}, text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Edit the marked hit"))},
      {group,
       {Qt::Key_Menu, Qt::SHIFT | Qt::Key_F10},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Menu of the hit"))},
      {group,
       {Qt::Key_F3, Qt::SHIFT | Qt::Key_F3},
       text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Next and previous place, where a list is looked through"))},
      {group, {Qt::Key_Escape}, text(QT_TRANSLATE_NOOP("TarnPlanView::PlanKeys", "Leave the search"))},
  };
}

}  // namespace TarnPlanView
