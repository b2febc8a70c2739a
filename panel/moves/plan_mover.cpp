#include "plan_mover.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "call_answer.h"
#include "group_tree.h"
#include "host_calls/ask.h"
#include "plan_item_role.h"
#include "plan_rules/update_request.h"
#include "plan_view_tree.h"
#include "standard_view_controller.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

bool IsPlanLevel(EItemLevel level) {
  return level == PublicPlanLevel || level == OwnPlanLevel;
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
  if (!controller_ || source == target || !IsPlanLevel(tree_->GetItemLevel(source))) {
    return;
  }
  const QModelIndex group = GroupAt(source, target);
  if (!group.isValid()) {
    return;
  }
  if (group == source.parent()) {
    Q_EMIT SignalMessageTipNeeded(tr("ViewSortFailedadOMakQWZCpToC"), CNomalMessage::Success);
  } else if (!CGroupTree::MayHoldPlans(group)) {
    Q_EMIT SignalMessageTipNeeded(tr("TheMoveViewOperationrvQbjaeS"), CNomalMessage::Success);
  } else {
    // The family of a row of either root is that of its children, whatever its own code says.
    const Destination destination{QStringToString(group.data(GroupIndexCodeRole).toString()),
                                  QStringToString(group.data().toString()), CViewPublicDef::GetIndexType(group)};
    Move(source.data(PlanIndexCodeRole).toString(), destination);
  }
}

// The group a drop on `target` means: the row itself, or that of the plan the drop was made beside.
QModelIndex CPlanMover::GroupAt(const QModelIndex& source, const QModelIndex& target) const {
  const EItemLevel from = tree_->GetItemLevel(source);
  const EItemLevel onto = tree_->GetItemLevel(target);
  if (onto == from) {
    return target.parent();
  }
  const bool own_group =
      (from == PublicPlanLevel && onto == PublicGroupLevel) || (from == OwnPlanLevel && onto == OwnGroupLevel);
  return own_group ? target : QModelIndex();
}

bool CPlanMover::IsBeingEdited(const QString& plan_code) {
  if (!is_edited_ || !is_edited_(plan_code)) {
    return false;
  }
  Q_EMIT SignalMessageTipNeeded(tr("The plan is open in the editor. Close it first, or choose the group there."),
                                CNomalMessage::Failure);
  return true;
}

void CPlanMover::Move(const QString& plan_code, const Destination& destination) {
  if (plan_code.isEmpty() || moving_.contains(plan_code) || IsBeingEdited(plan_code)) {
    return;
  }
  moving_.insert(plan_code);
  GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(plan_code);
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Within(calls_)
      .Then(this, [this, plan_code, destination](const auto& fetched) {
        if (!fetched.ok) {
          moving_.remove(plan_code);
          Q_EMIT SignalMessageTipNeeded(StringToQString(fetched.response.error_info), CNomalMessage::Failure);
        } else if (IsBeingEdited(plan_code)) {  // opened since
          moving_.remove(plan_code);
        } else if (controller_) {
          Save(fetched.response, destination);
        }
      });
}

void CPlanMover::Save(const GetPlanDetailResponse& plan, const Destination& destination) {
  UpdatePlanRequest request = UpdateRequestFrom(plan);
  request.index_type = destination.type;
  request.parent_index_code = destination.code;
  request.parent_name = destination.name;
  const auto answered = [mover = QPointer<CPlanMover>(this), code = StringToQString(plan.index_code),
                         sent = calls_.Current()](const CallAnswer& answer) {
    if (mover && !sent.IsDropped()) {
      mover->OnAnswer(code, answer.ok);
    }
  };
  controller_->UpdatePlanParam(request, StringToQString(plan.name), answered);
}

void CPlanMover::OnAnswer(const QString& plan_code, bool moved) {
  moving_.remove(plan_code);
  if (moved) {
    Q_EMIT SignalMoved(plan_code);
  }
}

}  // namespace TarnPlanView
