#include "current_row_keeper.h"

#include <utility>

#include "plan_item_role.h"
#include "plan_view_tree.h"

namespace TarnPlanView {

CCurrentRowKeeper::CCurrentRowKeeper(CPlanViewTree* tree) : QObject(tree), tree_(tree) {}

void CCurrentRowKeeper::Watch(QAbstractItemModel* rows) {
  connect(rows, &QAbstractItemModel::rowsAboutToBeRemoved, this, &CCurrentRowKeeper::OnRemoval);
}

void CCurrentRowKeeper::SetKeeping(bool keeping) {
  keeping_ = keeping;
  if (!keeping) {
    removed_.clear();
    before_load_.reset();
    saved_.reset();
  }
}

void CCurrentRowKeeper::OnCurrentChanged(const QModelIndex& current, const QModelIndex& previous) {
  if (previous.data(PlanIndexCodeRole).toString() != removed_) {
    removed_.clear();  // somebody has gone on from where that row stood
  }
  if (current.parent().isValid()) {
    before_load_.reset();  // the user has gone on from where the load found him
  }
}

void CCurrentRowKeeper::OnRemoval(const QModelIndex& parent, int first, int last) {
  const QModelIndex row = tree_->currentIndex();
  if (!keeping_ || !row.isValid()) {
    return;
  }
  if (!parent.isValid()) {
    AwaitReload(row);
  }
  if (row.parent() == parent && row.row() >= first && row.row() <= last) {
    removed_ = row.data(PlanIndexCodeRole).toString();
  }
}

// Everything is about to be loaded again. A row that is awaited already counts more than a root that stood in for it.
void CCurrentRowKeeper::AwaitReload(const QModelIndex& row) {
  if (before_load_) {
    return;
  }
  before_load_ = CPlanNodeRef(row);
  for (QModelIndex group = row.parent(); group.isValid(); group = group.parent()) {
    tree_->ExpandWhenLoaded(group.data(GroupIndexCodeRole).toString());
  }
}

void CCurrentRowKeeper::OnRowsChanged() {
  const QModelIndex before = before_load_.value_or(CPlanNodeRef()).Resolve();
  if (before.isValid()) {
    before_load_.reset();
    tree_->setCurrentIndex(before);
  }
  if (!saved_) {
    return;
  }
  const bool gone_on = tree_->currentIndex().data(GroupIndexCodeRole).toString() != saved_->group;
  if (gone_on) {
    saved_.reset();
  } else if (tree_->RowOf(saved_->code, false).isValid()) {
    MakeCurrent(std::exchange(saved_, std::nullopt)->code);
  }
}

void CCurrentRowKeeper::OnPlanUpdated(const QString& plan_code) {
  if (removed_.isEmpty() || removed_ != plan_code) {
    return;
  }
  removed_.clear();
  const QModelIndex neighbour = tree_->currentIndex();
  if (!MakeCurrent(plan_code) && !neighbour.data(IsGroupRole).toBool()) {
    tree_->setCurrentIndex(neighbour.parent());  // no key is meant for the neighbour
  }
}

void CCurrentRowKeeper::OnPlanStored(const QString& plan_code, const QString& group_code) {
  const bool gone_on = tree_->hasFocus();
  if (!keeping_ || gone_on || MakeCurrent(plan_code)) {
    return;
  }
  const QModelIndex group = tree_->RowOf(group_code, true);
  if (group.isValid()) {
    saved_ = {plan_code, group_code};
    tree_->setCurrentIndex(group);
    tree_->ExpandAsync(group);
  }
}

bool CCurrentRowKeeper::MakeCurrent(const QString& plan_code) {
  const QModelIndex row = tree_->RowOf(plan_code, false);
  if (!row.isValid()) {
    return false;
  }
  if (!tree_->isExpanded(row.parent())) {
    tree_->expand(row.parent());
  }
  tree_->setCurrentIndex(row);
  return true;
}

}  // namespace TarnPlanView
