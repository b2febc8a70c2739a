#include "plan_mover.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "call_answer.h"
#include "deletion_texts.h"
#include "group_tree.h"
#include "host_calls/ask.h"
#include "moved_rows.h"
#include "plan_item_role.h"
#include "plan_rules/update_request.h"
#include "plan_view_tree.h"
#include "row_move_check.h"
#include "standard_view_controller.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

PlanMove Reversed(const PlanMove& move) {
  return {move.plan_code, move.name, move.to, move.from};
}

}  // namespace

CPlanMover::CPlanMover(CPlanViewTree* tree, QObject* parent) : QObject(parent), tree_(tree) {
  connect(tree_, &CPlanViewTree::SignalMoveRow, this, &CPlanMover::OnMoveRow);
}

void CPlanMover::SetController(CStandardViewController* controller) {
  if (controller_) {
    disconnect(controller_, nullptr, this, nullptr);
  }
  Stop();
  controller_ = controller;
  if (controller_) {
    // Its answers do not come any more.
    connect(controller_, &QObject::destroyed, this, &CPlanMover::Stop);
  }
}

void CPlanMover::Stop() {
  calls_.Drop();
  moving_.clear();
}

void CPlanMover::OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect) {
  Q_UNUSED(targetRect)
  const QModelIndex source = tree_->indexAt(start);
  const QModelIndex target = tree_->indexAt(end);
  if (!controller_ || source == target) {
    return;
  }
  if (IsGroupRow(source) && target.isValid()) {
    Q_EMIT SignalMessageTipNeeded(tr("Groups stay where they are. Only plans can be moved."), CNomalMessage::Failure);
  }
  if (!IsPlanLevel(tree_->GetItemLevel(source))) {
    return;
  }
  const QModelIndex group = GroupAt(source, target);
  if (!group.isValid()) {
    return;
  }
  if (group == source.parent()) {
    Q_EMIT SignalMessageTipNeeded(tr("ViewSortFailedadOMakQWZCpToC"), CNomalMessage::Failure);
  } else {
    MoveTo(source.data(PlanIndexCodeRole).toString(), group);
  }
}

void CPlanMover::MoveTo(const QString& plan_code, const QModelIndex& group) {
  if (!CGroupTree::MayHoldPlans(group)) {
    Q_EMIT SignalMessageTipNeeded(tr("TheMoveViewOperationrvQbjaeS"), CNomalMessage::Failure);
    return;
  }
  // The family of a row of either root is that of its children, whatever its own code says.
  PlanMove move;
  move.plan_code = plan_code;
  move.to = {QStringToString(group.data(GroupIndexCodeRole).toString()), QStringToString(group.data().toString()),
             CViewPublicDef::GetIndexType(group)};
  Move(move, kMove);
}

void CPlanMover::Rename(const QString& plan_code, const QString& name) {
  if (plan_code.isEmpty() || !controller_) {
    return;
  }
  if (IsUnderWay(plan_code) || IsBeingEdited(plan_code)) {
    Q_EMIT SignalNotRenamed(plan_code, name);
    return;
  }
  moving_.insert(plan_code);
  GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(plan_code);
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Within(calls_)
      .Then(this, [this, plan_code, name](const auto& fetched) {
        if (!fetched.ok) {
          Q_EMIT SignalMessageTipNeeded(StringToQString(fetched.response.error_info), CNomalMessage::Failure);
        } else if (!IsBeingEdited(plan_code) && controller_) {
          SaveAs(fetched.response, plan_code, name);
          return;
        }
        moving_.remove(plan_code);
        Q_EMIT SignalNotRenamed(plan_code, name);
      });
}

void CPlanMover::SaveAs(const GetPlanDetailResponse& plan, const QString& plan_code, const QString& name) {
  UpdatePlanRequest renamed = UpdateRequestFrom(plan);
  renamed.plan_name = QStringToString(name);
  const QString old_name = StringToQString(plan.name);
  const auto answered = [mover = QPointer<CPlanMover>(this), plan_code, name, is_new = name != old_name,
                         sent = calls_.Current()](const CallAnswer& answer) {
    if (!mover || sent.IsDropped()) {
      return;
    }
    mover->moving_.remove(plan_code);
    if (!answer.ok) {
      Q_EMIT mover->SignalNotRenamed(plan_code, name);
    } else if (is_new) {
      Q_EMIT mover->SignalRenamed(name);
    }
  };
  controller_->UpdatePlanParam(renamed, old_name, answered);
}

void CPlanMover::Undo(const PlanMove& move) {
  if (controller_) {
    Move(Reversed(move), kMoveBack);
  }
}

// The group a drop on `target` means: the row itself, or that of the plan the drop was made beside.
QModelIndex CPlanMover::GroupAt(const QModelIndex& source, const QModelIndex& target) const {
  const EItemLevel from = tree_->GetItemLevel(source);
  const EItemLevel onto = tree_->GetItemLevel(target);
  if (onto == from) {
    return target.parent();
  }
  return IsPlanOverItsGroup(from, onto) ? target : QModelIndex();
}

bool CPlanMover::IsUnderWay(const QString& plan_code) {
  if (!moving_.contains(plan_code)) {
    return false;
  }
  Q_EMIT SignalMessageTipNeeded(tr("The last change is still being saved. Try again in a moment."),
                                CNomalMessage::Failure);
  return true;
}

bool CPlanMover::IsBeingEdited(const QString& plan_code) {
  if (!is_edited_ || !is_edited_(plan_code)) {
    return false;
  }
  Q_EMIT SignalMessageTipNeeded(tr("The plan is open in the editor. Close it first, or change it there."),
                                CNomalMessage::Failure);
  return true;
}

void CPlanMover::Move(const PlanMove& move, Course course) {
  const QString& code = move.plan_code;
  if (code.isEmpty()) {
    return;
  }
  if (IsUnderWay(code) || IsBeingEdited(code)) {
    Retry(move, course);
    return;
  }
  moving_.insert(code);
  Q_EMIT SignalMoving(code);
  GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(code);
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Within(calls_)
      .Then(this, [this, move, course](const auto& fetched) {
        moving_.remove(move.plan_code);
        if (!fetched.ok) {
          Q_EMIT SignalMessageTipNeeded(StringToQString(fetched.response.error_info), CNomalMessage::Failure);
          if (fetched.response.error_kind == Unavailable) {
            Retry(move, course);
          }
        } else if (IsBeingEdited(move.plan_code)) {  // it may have been opened since
          Retry(move, course);
        } else if (controller_) {
          OnFetched(fetched.response, move, course);
        }
      });
}

void CPlanMover::Retry(const PlanMove& move, Course course) {
  if (course == kMoveBack) {
    Q_EMIT SignalStillMoved(Reversed(move));
  }
}

// What else was changed meanwhile stays changed.
void CPlanMover::OnFetched(const GetPlanDetailResponse& plan, PlanMove move, Course course) {
  move.name = StringToQString(plan.name);
  if (course == kMove) {
    move.from = {plan.group_index_code, plan.group_name, plan.type};
  } else if (plan.group_index_code != move.from.code) {
    Q_EMIT SignalMessageTipNeeded(FillPlaces(tr("\"%1\" was moved on in the meantime."), {move.name}),
                                  CNomalMessage::Failure);
    return;
  }
  Save(plan, move, course);
}

void CPlanMover::Save(const GetPlanDetailResponse& plan, const PlanMove& move, Course course) {
  moving_.insert(move.plan_code);
  UpdatePlanRequest request = UpdateRequestFrom(plan);
  request.index_type = move.to.family;
  request.parent_index_code = move.to.code;
  request.parent_name = move.to.name;
  const auto answered = [mover = QPointer<CPlanMover>(this), move, course,
                         sent = calls_.Current()](const CallAnswer& answer) {
    if (mover && !sent.IsDropped()) {
      mover->OnAnswer(move, course, answer);
    }
  };
  controller_->UpdatePlanParam(request, move.name, answered);
}

void CPlanMover::OnAnswer(const PlanMove& move, Course course, const CallAnswer& answer) {
  moving_.remove(move.plan_code);
  if (!answer.ok) {
    if (answer.kind == Unavailable) {
      Retry(move, course);
    }
    return;
  }
  if (course == kMove) {
    Q_EMIT SignalMoved(move);
  } else {
    Q_EMIT SignalMovedBack(move);
  }
}

}  // namespace TarnPlanView
