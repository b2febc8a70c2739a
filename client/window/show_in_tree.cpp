#include "window/show_in_tree.h"

#include <utility>

#include "MarUIControl/nomal_message.h"
#include "plans/plan_family.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "window/window_actions.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;
using TarnPlanView::CViewExternWidget;

CShowInTree::CShowInTree(CWindowActions* actions, CLiveWall* wall, QObject* parent)
    : QObject(parent), actions_(actions), wall_(wall) {
  actions_->Connect(WindowCommand::ShowInTree, [this] { ShowPlaying(); });
  wall_->Bar()->OfferOnTitle(actions_->Of(WindowCommand::ShowInTree));
  BindButton(wall_->Bar()->ShowInTreeButton(), actions_->Of(WindowCommand::ShowInTree));
  connect(wall_, &CLiveWall::SignalPlanChanged, this, &CShowInTree::Offer);
  Offer();
}

void CShowInTree::Attach(CPlanFamily* family, std::function<void()> bring_to_front) {
  trees_.push_back({family, std::move(bring_to_front)});
  connect(family->Panel(), &CViewExternWidget::SignalShowInOtherTree, this, &CShowInTree::Show);
}

void CShowInTree::Offer() {
  QString why_not;
  if (!wall_->IsPlaying()) {
    why_not = tr("No plan plays.");
  }
  actions_->SetReason(WindowCommand::ShowInTree, why_not);
}

void CShowInTree::ShowPlaying() {
  if (wall_->IsPlaying()) {
    Show(wall_->PlanCode(), wall_->Plan().type);
  } else {
    Q_EMIT SignalMessage(tr("No plan plays."), CNomalMessage::Hint);
  }
}

void CShowInTree::Show(const QString& plan_code, int family) {
  for (const Tree& tree : trees_) {
    if (tree.family->Theme() == family) {
      tree.bring_to_front();
      tree.family->Panel()->ShowInTree(plan_code);
      return;
    }
  }
  Q_EMIT SignalMessage(tr("No tree here shows this plan."), CNomalMessage::Failure);
}

}  // namespace TarnClient
