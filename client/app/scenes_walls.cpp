#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QAction>

#include "TarnUIDataController/popup_menu.h"
#include "app/scenes.h"
#include "commands/row_menu.h"
#include "plans/plan_family.h"
#include "window/extra_wall.h"
#include "window/main_window.h"
#include "window/walls.h"

// Scenes with a second wall, which stands over the first one here, as on a desk with one screen.
namespace TarnClient {

void CScene::AddWall() {
  AddCall([this] {
    CExtraWall* wall = window_->Walls().OpenNew();
    wall->setWindowState(Qt::WindowNoState);
    wall->setGeometry(QRect(window_->geometry().topLeft() + QPoint(250, 130), QSize(1020, 660)));
  });
}

void CScene::AddPlayOnWall(const QString& group, const QString& plan) {
  AddWall();
  AddExpansion(group);
  AddCurrent(plan);
  Add([this] {
    window_->Walls().PlayOn(1, window_->CurrentFamily().Panel()->GetCurrentSelectedViewID(), false);
    return true;
  });
  Add([this, plan] { return window_->Walls().OpenWalls().at(1).playing == plan; });
}

void CScene::SecondWall() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  AddPlayOnWall(QStringLiteral("Tours"), QStringLiteral("Night patrol"));
}

void CScene::PlayOnMenu() {
  SecondWall();
  AddCurrent(QStringLiteral("Gate overview"));
  AddCall([this] { window_->Walls().Extra().first()->hide(); });
  AddMenu();
  Add([this] {
    auto* menu = window_->CurrentFamily().Panel()->GetViewMoreMenu();
    menu->setActiveAction(window_->RowMenu(0).Of(RowCommand::PlayOn));
    Press(menu, Qt::Key_Right);
    return true;
  });
}

void CScene::ClosingAllQuestion() {
  SecondWall();
  AddCall([this] { window_->close(); });
}

}  // namespace TarnClient
