#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMouseEvent>

#include "TarnUIDataController/popup_menu.h"
#include "app/scenes.h"
#include "commands/row_menu.h"
#include "plans/plan_family.h"
#include "window/main_window.h"

// Scenes of the row menu, of what its own entries open, and of the signs of plans.
namespace TarnClient {

void CScene::AddRowCommand(RowCommand command) {
  AddMenu();
  Add([this, command] {
    auto* menu = window_->CurrentFamily().Panel()->GetViewMoreMenu();
    menu->setActiveAction(window_->RowMenu(0).Of(command));
    Press(menu, Qt::Key_Return);
    return true;
  });
}

void CScene::AddHover(const QString& plan) {
  Add([this, plan] {
    auto* tree = window_->CurrentFamily().Panel()->GetPlanViewTree();
    const QPoint row = tree->visualRect(Row(plan)).center();
    QMouseEvent move(QEvent::MouseMove, row, tree->viewport()->mapToGlobal(row), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(tree->viewport(), &move);
    return true;
  });
}

// With the reason why one of the entries is grey.
void CScene::RowMenuGuard() {
  RowMenu();
  Add([this] {
    auto* menu = window_->CurrentFamily().Panel()->GetViewMoreMenu();
    const QPoint at = menu->actionGeometry(window_->RowMenu(0).Of(RowCommand::Duplicate)).center();
    QHelpEvent help(QEvent::ToolTip, at, menu->mapToGlobal(at));
    QCoreApplication::sendEvent(menu, &help);
    return true;
  });
}

void CScene::HitMenu() {
  Search();
  Add([this] {
    auto* hits = window_->CurrentFamily().Panel()->findChild<QWidget*>(QStringLiteral("search_list_view"));
    if (!hits->isVisible()) {
      return false;
    }
    Press(hits, Qt::Key_Menu);
    return true;
  });
}

void CScene::RenamePlan() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddRowCommand(RowCommand::Rename);
}

void CScene::MoveTo() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddRowCommand(RowCommand::MoveTo);
  Add([this] {
    auto* dialog = window_->findChild<QDialog*>(QStringLiteral("move_to_dlg"));
    dialog->findChild<QLineEdit*>()->setText(QStringLiteral("cold"));
    return true;
  });
}

void CScene::Signs() {
  AddExpansion(QStringLiteral("Tours"));
  AddCurrent(QStringLiteral("Night patrol"));
}

void CScene::TourPreview() {
  Signs();
  AddHover(QStringLiteral("Night patrol"));
}

// What a newcomer sees who does nothing.
void CScene::FirstStart() {
  Add([this] {
    const bool has_plans = Row(QStringLiteral("Plans")).isValid();
    if (has_plans) {
      window_->OpenFirst();
    }
    return has_plans;
  });
}

}  // namespace TarnClient
