#include "row_deletion.h"

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/show_message_tip.h"
#include "deletion_texts.h"
#include "plan_item_role.h"
#include "plan_node_ref.h"
#include "view_config_manager.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;

namespace {

constexpr int kConfirmed = 1;
constexpr int kCloseButton = 2;
constexpr int kQuestionButtons = 3;

// Somebody may have put more into a group since it was asked about: the host says what went with it.
void Complete(DeletedRow* row, DeletionSubject subject, const CallAnswer& answer) {
  if (answer.deleted_groups >= 0 && answer.deleted_plans >= 0) {
    subject.inside = RowsInside{answer.deleted_groups, answer.deleted_plans};
  }
  row->name = subject.name;
  row->notice = DeletionNotice(subject);
  row->restorable_seconds = answer.restorable_seconds;
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
bool CRowDeletion::Confirm(const DeletionSubject& subject) {
  const QPointer<CRowDeletion> alive(this);
  const int asked_in = session_;
  const int answer = tarn_ui_data_controller::ShowMessageTip(DeletionQuestion(subject), CNomalMessage::Failure, panel_,
                                                             kQuestionButtons, CViewExternWidget::tr("Delete"));
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
  const DeletionSubject subject = DeletionSubjectOf(index);
  if (deleting_.contains(group) || !Confirm(subject) || !controller_ || !row.Resolve().isValid()) {
    return;
  }
  controller_->DeletePlanGroupByIndex(row.Resolve(), Note(group, row.Resolve(), subject));
}

void CRowDeletion::DeletePlan(const QModelIndex& index) {
  const CPlanNodeRef row(index);
  const Row plan(false, index.data(PlanIndexCodeRole).toString());
  const DeletionSubject subject = DeletionSubjectOf(index);
  if (deleting_.contains(plan) || !Confirm(subject) || !controller_ || !row.Resolve().isValid()) {
    return;
  }
  const QPointer<CRowDeletion> alive(this);
  if (row.Resolve().data(PlayingRole).toBool()) {  // the wall may have gone on while the question was open
    Q_EMIT SignalStopPlan();
  }
  if (alive && controller_ && row.Resolve().isValid()) {
    controller_->DeletePlanByIndex(row.Resolve(), Note(plan, row.Resolve(), subject));
  }
}

// Until its own answer comes, and no other, the row is not deleted once more.
CStandardViewController::PlanAnswer CRowDeletion::Note(const Row& row, const QModelIndex& index,
                                                       const DeletionSubject& subject) {
  deleting_.insert(row);
  DeletedRow deleted;
  deleted.is_group = row.first;
  deleted.code = row.second;
  deleted.parent_code = index.parent().data(GroupIndexCodeRole).toString();
  return [self = QPointer<CRowDeletion>(this), row, deleted, subject,
          begun_in = session_](const CallAnswer& answer) mutable {
    if (!self || self->session_ != begun_in) {
      return;
    }
    self->deleting_.remove(row);
    if (answer.ok && answer.restorable_seconds > 0) {
      Complete(&deleted, subject, answer);
      Q_EMIT self->SignalDeleted(deleted);
    }
  };
}

void CRowDeletion::Undo(const DeletedRow& row) {
  if (!controller_) {
    return;
  }
  const auto answered = [self = QPointer<CRowDeletion>(this), row, begun_in = session_](const CallAnswer& answer) {
    if (!self || self->session_ != begun_in) {
      return;
    }
    if (answer.ok) {
      DeletedRow restored = row;
      restored.code = answer.text;
      Q_EMIT self->SignalRestored(restored);
    } else if (answer.kind == view_plugin_protocol::Unavailable) {
      Q_EMIT self->SignalStillDeleted(row);
    }
  };
  controller_->RestoreDeleted({MarUIControl::QStringToString(row.code), row.is_group}, row.parent_code, answered);
}

}  // namespace TarnPlanView
