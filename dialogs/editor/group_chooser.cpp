#include "group_chooser.h"

#include "group_tree.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

CGroupChooser::CGroupChooser(QWidget* parent) : CMultilevelComboBox(parent), tree_(new CGroupTree(this)) {
  setObjectName(QStringLiteral("target_group_box"));
  setAccessibleName(tr("Group"));
  SetEditLabelVisible(false);
  tree_->ExpandWhenLoaded(QString::fromLatin1(kPublicRootCode));
  tree_->ExpandWhenLoaded(QString::fromLatin1(kOwnRootCode));
  SetLocationView(tree_);
  connect(tree_->Groups(), &QAbstractItemModel::rowsInserted, this, &CGroupChooser::Resolve);
  connect(tree_->Groups(), &QAbstractItemModel::modelReset, this, &CGroupChooser::Resolve);
  connect(this, &CGroupChooser::SignalIndexActivated, this, &CGroupChooser::OnChosen);
  connect(this, &CGroupChooser::SignalCurrentIndexChanged, this, &CGroupChooser::OnCurrent);
}

void CGroupChooser::SetModel(CStandardPlanModel* model) {
  if (model_ != model) {
    model_ = model;
    tree_->SetModel(model);
    Resolve();
  }
}

void CGroupChooser::SetController(CStandardViewController* controller) {
  tree_->SetController(controller);
}

void CGroupChooser::SetAddMode(bool add) {
  tree_->Groups()->SetAddOrEdit(add);
  tree_->Groups()->invalidate();
  Resolve();
}

void CGroupChooser::ShowGroup(const QString& code, const QString& name) {
  if (code_ == code && !vanished_ && GetCurrentIndex().isValid()) {
    return;
  }
  vanished_ = vanished_ && code_ == code;  // the same group is no less gone after another change
  code_ = code;
  name_ = name;
  Resolve();
}

// Its row in the drop-down; invalid while it is not loaded, or filtered out.
QModelIndex CGroupChooser::RowOfGroup() const {
  if (!model_ || code_.isEmpty()) {
    return QModelIndex();
  }
  return tree_->Groups()->mapFromSource(model_->FindIndexByIndexCode(code_, true));
}

void CGroupChooser::Resolve() {
  const QModelIndex row = RowOfGroup();
  if (row.isValid() && row == GetCurrentIndex()) {
    return;
  }
  resolving_ = true;
  SetCurrentIndex(row);
  resolving_ = false;
  vanished_ = vanished_ && !row.isValid();
  const bool has_name = !code_.isEmpty() && !vanished_ && !name_.isEmpty();
  SetPlaceholderText(has_name ? name_ : tr("Choose a group"));
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

// A chosen row that goes by itself: its group was deleted, or the tree is loaded again and the row will come back.
void CGroupChooser::OnCurrent(const QModelIndex& index) {
  if (!index.isValid() && !resolving_) {
    vanished_ = true;
    SetPlaceholderText(tr("Choose a group"));
  }
}

QString CGroupChooser::Problem() const {
  const QModelIndex row = GetCurrentIndex();
  if (row.isValid()) {
    const QString no_group = tr("A plan cannot stand directly at the top. Choose a group below.");
    return CGroupTree::MayHoldPlans(row) ? QString() : no_group;
  }
  if (vanished_) {
    return tr("The group is no longer there. Choose another one.");
  }
  return code_.isEmpty() ? tr("Choose a group first.") : QString();
}

}  // namespace TarnPlanView
