#include "current_row_keeper.h"

#include <QScopedValueRollback>
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
    moving_.clear();
  }
}

void CCurrentRowKeeper::OnCurrentChanged(const QModelIndex& current, const QModelIndex& previous) {
  const bool has_gone = !removed_.isEmpty() && previous.data(PlanIndexCodeRole).toString() == removed_;
  if (!setting_ && !has_gone) {
    moving_.clear();
  }
  if (previous.data(PlanIndexCodeRole).toString() != removed_) {
    removed_.clear();  // somebody has gone on from where that row stood
  }
  if (current.parent().isValid()) {
    before_load_.reset();  // the user has gone on from where the load found him
    if (saved_ && !saved_->approached) {
      saved_.reset();
    }
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
    SetCurrent(before);
  }
  if (!saved_) {
    return;
  }
  if (!saved_->approached) {
    Approach();
    return;
  }
  const bool gone_on = tree_->currentIndex().data(GroupIndexCodeRole).toString() != saved_->group;
  if (gone_on) {
    saved_.reset();
  } else if (tree_->RowOf(saved_->code, saved_->is_group).isValid()) {
    const AwaitedRow row = *std::exchange(saved_, std::nullopt);
    MakeCurrent(row.code, row.is_group);
  }
}

void CCurrentRowKeeper::OnPlanUpdated(const QString& plan_code) {
  if (removed_.isEmpty() || removed_ != plan_code) {
    return;
  }
  removed_.clear();
  const QModelIndex neighbour = tree_->currentIndex();
  if (!MakeCurrent(plan_code) && !neighbour.data(IsGroupRole).toBool()) {
    SetCurrent(neighbour.parent());  // no key is meant for the neighbour
  }
}

void CCurrentRowKeeper::OnPlanStored(const QString& plan_code, const QString& group_code) {
  const bool gone_on = tree_->hasFocus();
  if (!gone_on) {
    Reveal(plan_code, false, group_code);
  }
}

bool CCurrentRowKeeper::Reveal(const QString& code, bool is_group, const QString& group_code) {
  if (!keeping_ || MakeCurrent(code, is_group)) {
    return true;
  }
  const bool is_loading = before_load_.has_value();
  const QModelIndex group = tree_->RowOf(group_code, true);
  if (!group.isValid() && !is_loading) {
    return false;
  }
  before_load_.reset();
  saved_ = {code, group_code, is_group, false};
  Approach();
  return true;
}

void CCurrentRowKeeper::OnMoving(const QString& plan_code) {
  moving_.insert(plan_code);
}

void CCurrentRowKeeper::RevealMoved(const QString& plan_code, const QString& group_code) {
  if (moving_.remove(plan_code)) {
    Reveal(plan_code, false, group_code);
  }
}

void CCurrentRowKeeper::SetCurrent(const QModelIndex& row) {
  const QScopedValueRollback<bool> setting(setting_, true);
  tree_->setCurrentIndex(row);
}

void CCurrentRowKeeper::Approach() {
  const AwaitedRow row = *saved_;
  const QModelIndex group = tree_->RowOf(row.group, true);
  if (MakeCurrent(row.code, row.is_group)) {
    saved_.reset();
  } else if (group.isValid()) {
    saved_->approached = true;
    SetCurrent(group);
    tree_->ExpandAsync(group);
  }
}

bool CCurrentRowKeeper::MakeCurrent(const QString& code, bool is_group) {
  const QModelIndex row = tree_->RowOf(code, is_group);
  if (!row.isValid()) {
    return false;
  }
  if (!tree_->isExpanded(row.parent())) {
    tree_->expand(row.parent());
  }
  SetCurrent(row);
  return true;
}

}  // namespace TarnPlanView
