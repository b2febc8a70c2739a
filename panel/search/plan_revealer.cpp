#include "plan_revealer.h"

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "host_calls/ask.h"
#include "plan_item_role.h"
#include "plan_rules/families.h"
#include "plan_view_tree.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

namespace {

constexpr int kLateRowMs = 1000;  // for a row whose notice has yet to come

void ExpandAbove(CPlanViewTree* tree, const QModelIndex& row) {
  if (row.parent().isValid()) {
    ExpandAbove(tree, row.parent());
    tree->ExpandAsync(row.parent());  // a group that got this row from elsewhere may lack the others
  }
}

}  // namespace

CPlanRevealer::CPlanRevealer(CPlanViewTree* tree, QObject* parent) : QObject(parent), tree_(tree) {
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &CPlanRevealer::GoOn);
}

void CPlanRevealer::SetModel(CStandardPlanModel* model) {
  Drop();
  if (model_) {
    disconnect(model_, nullptr, this, nullptr);
  }
  model_ = model;
  connect(model, &CStandardPlanModel::SignalFinshAsynchronous, this, &CPlanRevealer::OnExpanded);
  connect(model, &QAbstractItemModel::rowsInserted, this, [this] {
    if (late_.isValid()) {
      soon_.start(0);
    }
  });
}

void CPlanRevealer::SetController(CStandardViewController* controller) {
  Drop();
  if (controller_) {
    disconnect(controller_, nullptr, this, nullptr);
  }
  controller_ = controller;
  if (controller) {
    connect(controller, &CStandardViewController::SignalFinishAnsyGetSubItem, this, &CPlanRevealer::OnExpanded);
  }
}

void CPlanRevealer::Drop() {
  call_.Drop();
  soon_.stop();
  late_.invalidate();
  wanted_.clear();
  shown_ = {};
  awaited_.clear();
}

void CPlanRevealer::Reveal(const QString& code, bool is_group, const Shown& shown) {
  Drop();
  wanted_ = code;
  is_group_ = is_group;
  shown_ = shown;
  from_ = tree_->currentIndex();
  if (ShowRow()) {
    return;
  }
  const int32_t type = is_group ? ResourceData::RT_VIEW_GROUP : ResourceData::RT_VIEW;
  const auto find = [type, wanted = MarUIControl::QStringToString(code)] { return FindPlanWay(type, wanted); };
  HostCalls::Ask(find).Replacing(call_).Then(this, [this](const PlanWay& way) { OnWay(way); });
}

void CPlanRevealer::OnWay(const PlanWay& way) {
  const int family = view_plugin_protocol::FamilyOfRoot(way.groups.value(0).toInt());
  const bool root_is_here = !model_ || tree_->RowOf(way.groups.value(0), true).isValid();
  if (way.is_gone) {
    Refuse(is_group_ ? CViewExternWidget::tr("This group is no longer there.")
                     : CViewExternWidget::tr("This plan is no longer there."));
  } else if (way.groups.isEmpty()) {
    Refuse(way.error.isEmpty() ? CViewExternWidget::tr("No tree here shows this plan.") : way.error);
  } else if (!root_is_here && family == model_->GetViewManagerThemeNodeType()) {
    Refuse(CViewExternWidget::tr("The plans could not be loaded."));
  } else if (!root_is_here) {
    const QString code = wanted_;
    Drop();
    Q_EMIT SignalInOtherTree(code, family);
  } else {
    way_ = way.groups;
    GoOn();
  }
}

// Also of groups that the user expands meanwhile.
void CPlanRevealer::OnExpanded(const QModelIndex& index) {
  if (!awaited_.isEmpty() && index.data(GroupIndexCodeRole).toString() == awaited_) {
    soon_.start(0);  // the rows may come after this
  }
}

void CPlanRevealer::GoOn() {
  const bool gone_on = from_.isValid() && from_ != tree_->currentIndex();
  if (wanted_.isEmpty() || gone_on) {
    Drop();
    return;
  }
  if (!from_.isValid()) {
    from_ = tree_->currentIndex();  // that row is gone, which the user has not done
  }
  if (ShowRow()) {
    return;
  }
  const QModelIndex group = LowestLoaded();
  const QString code = group.data(GroupIndexCodeRole).toString();
  if (!group.isValid() || !tree_->model()->canFetchMore(group)) {
    AwaitLateRow();
  } else if (code == awaited_) {
    Drop();  // it could not be loaded, which the controller has said
  } else {
    awaited_ = code;
    tree_->ExpandAsync(group);
  }
}

void CPlanRevealer::AwaitLateRow() {
  if (!late_.isValid()) {
    late_.start();
  }
  const qint64 left = kLateRowMs - late_.elapsed();
  if (left > 0) {
    soon_.start(static_cast<int>(left));
  } else {
    Refuse(CViewExternWidget::tr("No tree here shows this plan."));
  }
}

QModelIndex CPlanRevealer::LowestLoaded() const {
  for (auto code = way_.crbegin(); code != way_.crend(); ++code) {
    const QModelIndex group = tree_->RowOf(*code, true);
    if (group.isValid()) {
      return group;
    }
  }
  return QModelIndex();
}

bool CPlanRevealer::ShowRow() {
  const QPersistentModelIndex row = tree_->RowOf(wanted_, is_group_);
  if (!row.isValid()) {
    return false;
  }
  const Shown shown = shown_;
  Drop();
  ExpandAbove(tree_, row);
  if (row.isValid()) {
    tree_->setCurrentIndex(row);
    tree_->scrollTo(row, QAbstractItemView::PositionAtCenter);
  }
  if (row.isValid() && shown) {
    shown(row);
  }
  return true;
}

void CPlanRevealer::Refuse(const QString& why) {
  Drop();
  Q_EMIT SignalMessageTipNeeded(why, MarUIControl::CNomalMessage::Failure);
}

}  // namespace TarnPlanView
