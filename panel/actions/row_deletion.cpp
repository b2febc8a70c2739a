#include "row_deletion.h"

#include "MarUIControl/nomal_message.h"
#include "TarnUIDataController/show_message_tip.h"
#include "plan_item_role.h"
#include "plan_node_ref.h"
#include "view_config_manager.h"
#include "view_extern_widget.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;

namespace {

constexpr int kConfirmed = 1;
constexpr int kCloseButton = 2;
constexpr int kQuestionButtons = 3;

bool IsChildPlaying(const QModelIndex& group) {
  const QAbstractItemModel* rows = group.model();
  for (int row = 0; row < rows->rowCount(group); ++row) {
    const QModelIndex child = rows->index(row, 0, group);
    const bool is_group = CViewPublicDef::IsPlanGroup(child);
    if ((is_group && IsChildPlaying(child)) || (!is_group && child.data(PlayingRole).toBool())) {
      return true;
    }
  }
  return false;
}

QString PlayingWarning() {
  if (CViewConfigManager::Instance().IsShowPlanOrView()) {
    return CViewExternWidget::tr("TheUserCurrentlyHasAWPBwgUrC");
  }
  return CViewExternWidget::tr("TheUserCurrentlyHasAwlMLoHj");
}

}  // namespace

CRowDeletion::CRowDeletion(QWidget* panel) : QObject(panel), panel_(panel) {}

void CRowDeletion::SetController(CStandardViewController* controller) {
  controller_ = controller;
  deleting_.clear();
}

void CRowDeletion::Drop() {
  ++session_;
  deleting_.clear();
}

void CRowDeletion::Delete(const QModelIndex& row) {
  if (!row.isValid() || !controller_) {
    return;
  }
  if (row.data(IsGroupRole).toBool()) {
    DeleteGroup(row);
  } else {
    DeletePlan(row);
  }
}

bool CRowDeletion::HasChildren(const QModelIndex& group) const {
  // First, because the host is asked only where its answer counts.
  if (CViewConfigManager::Instance().IsSupportDelPlanWithChildren()) {
    return false;
  }
  return group.model()->rowCount(group) > 0 || controller_->IsHaveChilds(group);
}

// False also when the user changed or the panel ended while the question was open.
bool CRowDeletion::Confirm(bool playing) {
  const QPointer<CRowDeletion> alive(this);
  const int asked_in = session_;
  QString question = CViewExternWidget::tr("ConfirmToDelete");
  if (playing) {
    question = PlayingWarning();
  }
  const int answer =
      tarn_ui_data_controller::ShowMessageTip(question, CNomalMessage::Failure, panel_, kQuestionButtons);
  return alive && session_ == asked_in && answer == kConfirmed;
}

void CRowDeletion::DeleteGroup(const QModelIndex& index) {
  if (HasChildren(index)) {
    tarn_ui_data_controller::ShowMessageTip(CViewExternWidget::tr("ContainsChildNodesThPmmApRHD"),
                                            CNomalMessage::Failure, panel_, kCloseButton);
    return;
  }
  const CPlanNodeRef row(index);
  const Row group(true, index.data(GroupIndexCodeRole).toString());
  if (deleting_.contains(group) || !Confirm(IsChildPlaying(index)) || !controller_ || !row.Resolve().isValid()) {
    return;
  }
  controller_->DeletePlanGroupByIndex(row.Resolve(), Note(group));
}

void CRowDeletion::DeletePlan(const QModelIndex& index) {
  const CPlanNodeRef row(index);
  const Row plan(false, index.data(PlanIndexCodeRole).toString());
  const bool playing = index.data(PlayingRole).toBool();
  if (deleting_.contains(plan) || !Confirm(playing) || !controller_ || !row.Resolve().isValid()) {
    return;
  }
  const QPointer<CRowDeletion> alive(this);
  if (playing) {
    Q_EMIT SignalStopPlan();
  }
  if (alive && controller_ && row.Resolve().isValid()) {
    controller_->DeletePlanByIndex(row.Resolve(), Note(plan));
  }
}

// Until its own answer comes, and no other, the row is not deleted once more.
CStandardViewController::PlanAnswer CRowDeletion::Note(const Row& row) {
  deleting_.insert(row);
  return [self = QPointer<CRowDeletion>(this), row, begun_in = session_](const CallAnswer&) {
    if (self && self->session_ == begun_in) {
      self->deleting_.remove(row);
    }
  };
}

}  // namespace TarnPlanView
