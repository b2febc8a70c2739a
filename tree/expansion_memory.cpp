#include "expansion_memory.h"

#include "MarUIControl/tree_view.h"
#include "plan_item_role.h"

namespace TarnPlanView {

namespace {

QString GroupCode(const QModelIndex& index) {
  return index.data(GroupIndexCodeRole).toString();
}

}  // namespace

CExpansionMemory::CExpansionMemory(MarUIControl::CTreeView* tree) : QObject(tree), tree_(tree) {
  connect(tree, &QTreeView::expanded, this, &CExpansionMemory::Remember);
  connect(tree, &QTreeView::collapsed, this, &CExpansionMemory::Forget);
}

void CExpansionMemory::Watch(QAbstractItemModel* model) {
  if (model_) {
    model_->disconnect(this);
  }
  model_ = model;
  found_.clear();
  for (auto row = opened_.cbegin(); row != opened_.cend(); ++row) {
    awaited_.insert(row.key());
  }
  opened_.clear();
  if (!model) {
    return;
  }
  connect(model, &QObject::destroyed, this, [this] { model_ = nullptr; });
  connect(model, &QAbstractItemModel::rowsInserted, this, &CExpansionMemory::Seek);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &CExpansionMemory::AwaitVanished);
  connect(model, &QAbstractItemModel::modelReset, this, [this] {
    AwaitVanished();
    SeekBelow(QModelIndex());
  });
  SeekBelow(QModelIndex());
}

void CExpansionMemory::Await(const QString& group_code) {
  const auto row = opened_.constFind(group_code);
  if (row != opened_.cend() && row->isValid()) {
    return;
  }
  awaited_.insert(group_code);
  SeekBelow(QModelIndex());
}

void CExpansionMemory::Remember(const QModelIndex& index) {
  const QString code = GroupCode(index);
  if (!code.isEmpty()) {
    awaited_.remove(code);
    opened_.insert(code, index);
  }
  SeekBelow(index);
}

void CExpansionMemory::Forget(const QModelIndex& index) {
  opened_.remove(GroupCode(index));
}

// A view says nothing of open rows that vanish.
void CExpansionMemory::AwaitVanished() {
  for (auto row = opened_.begin(); row != opened_.end();) {
    if (row->isValid()) {
      ++row;
    } else {
      awaited_.insert(row.key());
      row = opened_.erase(row);
    }
  }
}

void CExpansionMemory::Seek(const QModelIndex& parent, int first, int last) {
  if (awaited_.isEmpty() || !model_) {
    return;
  }
  for (int row = first; row <= last; ++row) {
    const QModelIndex index = model_->index(row, 0, parent);
    if (awaited_.contains(GroupCode(index))) {
      found_.append(index);
    }
  }
  if (!found_.isEmpty()) {
    // Later: the rows may have come in the middle of a load.
    QMetaObject::invokeMethod(this, &CExpansionMemory::OpenFound, Qt::QueuedConnection);
  }
}

void CExpansionMemory::SeekBelow(const QModelIndex& parent) {
  if (model_ && !awaited_.isEmpty()) {
    Seek(parent, 0, model_->rowCount(parent) - 1);
  }
}

void CExpansionMemory::OpenFound() {
  const QList<QPersistentModelIndex> rows = found_;
  found_.clear();
  for (const QPersistentModelIndex& row : rows) {
    const QString code = GroupCode(row);
    // Once a row: who closes it, or whose fetch fails, is not to see it opened again by the next row that comes in.
    if (awaited_.remove(code)) {
      opened_.insert(code, row);
      tree_->ExpandAsync(row);
    }
  }
}

}  // namespace TarnPlanView
