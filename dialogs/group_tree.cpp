#include "group_tree.h"

#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_config_manager.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

CGroupTree::CGroupTree(QWidget* parent) : CPlanViewTree(parent), groups_(new CViewSortFilterProxyModel(parent, true)) {
  SetFilterSortModel(groups_);
  setColumnResizeToContents(0, false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setDragDropMode(QAbstractItemView::NoDragDrop);
}

void CGroupTree::SetModel(CStandardPlanModel* model) {
  if (model_ == model) {
    return;
  }
  if (model_) {
    disconnect(model_, nullptr, this, nullptr);
  }
  model_ = model;
  groups_->setSourceModel(model);
  if (model_) {
    connect(model_, &CStandardPlanModel::SignalFinshAsynchronous, this, &CGroupTree::OnFinishAnsyFilterExpandedTree);
  }
}

void CGroupTree::SetController(CStandardViewController* controller) {
  if (controller_ == controller) {
    return;
  }
  if (controller_) {
    disconnect(this, nullptr, controller_, nullptr);
    disconnect(controller_, nullptr, this, nullptr);
  }
  controller_ = controller;
  if (controller_) {
    connect(this, &CGroupTree::AsynchronousExpand, controller_, &CStandardViewController::OnExpandViewTreeItem);
    connect(controller_, &CStandardViewController::SignalFinishAnsyGetSubItem, this,
            &CGroupTree::OnFinishAnsyFilterExpandedTree);
  }
}

bool CGroupTree::MayHoldPlans(const QModelIndex& row) {
  const int type = row.data(ItemTypeRole).toInt();
  const bool is_root = type == PublicRootItem || type == OwnRootItem;
  return !is_root || CViewConfigManager::Instance().CreatePlanUnderRootNode();
}

}  // namespace TarnPlanView
