#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include "MarUIControl/offer_strip.h"
#include "TarnHost/modal_answer.h"
#include "app/scenes.h"
#include "plans/plan_family.h"
#include "window/main_window.h"

// Scenes of deletions and moves, and of undoing them.
namespace TarnClient {

void CScene::AddYes() {
  Add([] {
    TarnHost::SetModalAnswer([](const TarnHost::ModalQuestion&) { return 1; });
    return true;
  });
}

void CScene::AddUndoOffered() {
  Add([this] { return window_->CurrentFamily().Panel()->findChild<MarUIControl::COfferStrip*>()->IsOffering(); });
}

void CScene::DeleteQuestionOfGroup() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddClick(QStringLiteral("delete_btn"));
}

void CScene::UndoDeletion() {
  AddYes();
  DeleteQuestionOfGroup();
  AddUndoOffered();
}

void CScene::UndoMove() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  Add([this] {
    auto* tree = window_->CurrentFamily().Panel()->GetPlanViewTree();
    const QRect plan = tree->visualRect(tree->currentIndex());
    const QRect group = tree->visualRect(Row(QStringLiteral("Roof")));
    Q_EMIT tree->SignalMoveRow(plan.center(), group.center(), group);
    return true;
  });
  AddUndoOffered();
}

}  // namespace TarnClient
