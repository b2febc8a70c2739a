#include "expansion_memory.h"

#include <QMultiMap>
#include <utility>

#include "MarUIControl/tree_view.h"
#include "plan_item_role.h"

namespace TarnPlanView {

namespace {

QString GroupCode(const QModelIndex& index) {
  return index.data(GroupIndexCodeRole).toString();
}

int DepthOf(const QModelIndex& index) {
  int depth = 0;
  for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
    ++depth;
  }
  return depth;
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
    awaited_.insert(row.key(), row->above);
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
  if (row != opened_.cend() && row->index.isValid()) {
    return;
  }
  awaited_.insert(group_code, QString());
  SeekBelow(QModelIndex());
}

void CExpansionMemory::Remember(const QModelIndex& index) {
  const QString code = GroupCode(index);
  if (!code.isEmpty()) {
    awaited_.remove(code);
    opened_.insert(code, {index, GroupCode(index.parent())});
  }
  SeekBelow(index);
}

void CExpansionMemory::Forget(const QModelIndex& index) {
  opened_.remove(GroupCode(index));
}

// A view says nothing of open rows that vanish.
void CExpansionMemory::AwaitVanished() {
  for (auto row = opened_.begin(); row != opened_.end();) {
    if (row->index.isValid()) {
      ++row;
    } else {
      awaited_.insert(row.key(), row->above);
      row = opened_.erase(row);
    }
  }
}

void CExpansionMemory::Seek(const QModelIndex& parent, int first, int last) {
  if (awaited_.isEmpty() || !model_) {
    return;
  }
  if (first <= last && awaited_.contains(GroupCode(parent))) {
    found_.append(parent);
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
      opened_.insert(code, {row, GroupCode(row.parent())});
      tree_->ExpandAsync(row);
      AwaitRowsBelow(row);
    }
  }
}

// In the middle of a load the row may come before those below it, and cannot be open without them.
void CExpansionMemory::AwaitRowsBelow(const QModelIndex& index) {
  if (index.isValid() && !tree_->isExpanded(index) && !tree_->IsWaiting(index)) {
    const QString code = GroupCode(index);
    awaited_.insert(code, opened_.take(code).above);
  }
}

OpenGroups CExpansionMemory::Groups() const {
  QMultiMap<int, OpenGroup> by_depth;
  for (auto row = opened_.cbegin(); row != opened_.cend(); ++row) {
    if (row->index.isValid() && !row->above.isEmpty()) {
      by_depth.insert(DepthOf(row->index), {row.key(), row->above});
    }
  }
  OpenGroups groups = by_depth.values().toVector();
  for (auto code = awaited_.cbegin(); code != awaited_.cend(); ++code) {
    if (!code->isEmpty() && !IsGone(code.key())) {
      groups.append({code.key(), *code});
    }
  }
  return groups;
}

// The group that it stood in, or one further up, is open and has its rows, but this one is not among them.
bool CExpansionMemory::IsGone(const QString& awaited_code) const {
  QString code = awaited_code;
  for (int level = 0; level <= awaited_.size() && awaited_.contains(code); ++level) {
    code = awaited_.value(code);
    const auto above = opened_.constFind(code);
    if (above != opened_.cend() && above->index.isValid()) {
      return model_ && model_->rowCount(above->index) > 0;
    }
  }
  return false;
}

void CExpansionMemory::SetGroups(const OpenGroups& groups) {
  const QHash<QString, Row> opened = std::exchange(opened_, {});
  const QHash<QString, QString> awaited = std::exchange(awaited_, {});
  found_.clear();
  for (auto row = opened.cbegin(); row != opened.cend(); ++row) {
    if (row->above.isEmpty()) {
      opened_.insert(row.key(), *row);
    }
  }
  for (auto code = awaited.cbegin(); code != awaited.cend(); ++code) {
    if (code->isEmpty()) {
      awaited_.insert(code.key(), *code);
    }
  }
  for (const OpenGroup& group : groups) {
    const Row row = opened.value(group.code);
    if (row.index.isValid()) {
      opened_.insert(group.code, row);
    } else if (!group.above.isEmpty()) {
      awaited_.insert(group.code, group.above);
    }
  }
  SeekBelow(QModelIndex());
  for (const Row& row : qAsConst(opened_)) {
    SeekBelow(row.index);
  }
}

}  // namespace TarnPlanView
