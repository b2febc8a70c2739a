#include "group_chooser.h"

#include "item_type.h"
#include "plan_item_role.h"
#include "plan_view_tree.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_config_manager.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

CGroupChooser::CGroupChooser(QWidget* parent) : CMultilevelComboBox(parent) {
  setObjectName(QStringLiteral("target_group_box"));
  setAccessibleName(tr("Group"));
  SetEditLabelVisible(false);
  MakeTree();
  connect(this, &CGroupChooser::SignalIndexActivated, this, &CGroupChooser::OnChosen);
  connect(this, &CGroupChooser::SignalCurrentIndexChanged, this, &CGroupChooser::OnCurrent);
}

void CGroupChooser::MakeTree() {
  proxy_ = new CViewSortFilterProxyModel(this, true);
  tree_ = new CPlanViewTree(this);
  tree_->SetFilterSortModel(proxy_);
  tree_->setColumnResizeToContents(0, false);
  // Here the tree only offers groups: no commands, no drags.
  tree_->setContextMenuPolicy(Qt::PreventContextMenu);
  tree_->setDragDropMode(QAbstractItemView::NoDragDrop);
  tree_->ExpandWhenLoaded(QString::fromLatin1(kPublicRootCode));
  tree_->ExpandWhenLoaded(QString::fromLatin1(kOwnRootCode));
  SetLocationView(tree_);
  connect(proxy_, &QAbstractItemModel::rowsInserted, this, &CGroupChooser::Resolve);
  connect(proxy_, &QAbstractItemModel::modelReset, this, &CGroupChooser::Resolve);
}

void CGroupChooser::SetModel(CStandardPlanModel* model) {
  if (model_ == model) {
    return;
  }
  if (model_) {
    disconnect(model_, nullptr, tree_, nullptr);
  }
  model_ = model;
  proxy_->setSourceModel(model);
  if (model_) {
    connect(model_, &CStandardPlanModel::SignalFinshAsynchronous, tree_,
            &CPlanViewTree::OnFinishAnsySourceExpandedTree);
  }
  Resolve();
}

void CGroupChooser::SetController(CStandardViewController* controller) {
  if (controller_ == controller) {
    return;
  }
  if (controller_) {
    disconnect(tree_, nullptr, controller_, nullptr);
    disconnect(controller_, nullptr, tree_, nullptr);
  }
  controller_ = controller;
  if (controller_) {
    connect(tree_, &CPlanViewTree::AsynchronousExpand, controller_, &CStandardViewController::OnExpandViewTreeItem);
    connect(controller_, &CStandardViewController::SignalFinishAnsyGetSubItem, tree_,
            &CPlanViewTree::OnFinishAnsyFilterExpandedTree);
  }
}

void CGroupChooser::SetAddMode(bool add) {
  proxy_->SetAddOrEdit(add);
  proxy_->invalidate();
  Resolve();
}

void CGroupChooser::ShowGroup(const QString& code, const QString& name) {
  if (code_ == code && !vanished_ && GetCurrentIndex().isValid()) {
    return;
  }
  vanished_ = vanished_ && code_ == code;  // told of another change it is no less gone
  code_ = code;
  name_ = name;
  Resolve();
}

void CGroupChooser::Resolve() {
  if (code_.isEmpty() && !GetCurrentIndex().isValid()) {
    SetPlaceholderText(tr("Choose a group"));
    return;
  }
  const QModelIndex row = model_ && !code_.isEmpty() ? model_->FindIndexByIndexCode(code_, true) : QModelIndex();
  const QModelIndex shown = row.isValid() ? proxy_->mapFromSource(row) : QModelIndex();
  if (shown.isValid() && shown == GetCurrentIndex()) {
    return;
  }
  resolving_ = true;
  SetCurrentIndex(shown);
  resolving_ = false;
  vanished_ = vanished_ && !shown.isValid();
  SetPlaceholderText(code_.isEmpty() || vanished_ || name_.isEmpty() ? tr("Choose a group") : name_);
}

void CGroupChooser::OnChosen(const QModelIndex& index) {
  code_ = index.data(GroupIndexCodeRole).toString();
  name_ = index.data().toString();
  vanished_ = false;
  Q_EMIT SignalGroupChosen(code_, name_, FamilyOf(index));
}

int CGroupChooser::FamilyOf(const QModelIndex& row) {
  return qMax(0, CViewPublicDef::GetIndexType(row));
}

// A chosen row that goes by itself: its group was deleted, or the tree is loading anew and the row will come back.
void CGroupChooser::OnCurrent(const QModelIndex& index) {
  if (!index.isValid() && !resolving_) {
    vanished_ = true;
    SetPlaceholderText(tr("Choose a group"));
  }
}

QString CGroupChooser::Problem() const {
  const QModelIndex row = GetCurrentIndex();
  if (!row.isValid()) {
    if (vanished_) {
      return tr("The group is no longer there. Choose another one.");
    }
    return code_.isEmpty() ? tr("Choose a group first.") : QString();
  }
  const int type = row.data(ItemTypeRole).toInt();
  const bool root = type == PublicRootItem || type == OwnRootItem || type == ReceivedRootItem;
  return root && !CViewConfigManager::Instance().CreatePlanUnderRootNode()
             ? tr("A plan cannot stand directly at the top. Choose a group below.")
             : QString();
}

}  // namespace TarnPlanView
