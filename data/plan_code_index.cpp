#include "plan_code_index.h"

#include <QStandardItemModel>
#include <algorithm>

#include "plan_item_role.h"

namespace TarnPlanView {

namespace {

QString CodeOf(const QStandardItem* item, int role) {
  return item->data(role).toString();
}

QVector<int> PathOf(const QStandardItem* item) {
  QVector<int> path;
  for (; item; item = item->parent()) {
    path.prepend(item->row());
  }
  return path;
}

bool ComesBefore(const QStandardItem* left, const QStandardItem* right) {
  const QVector<int> l = PathOf(left);
  const QVector<int> r = PathOf(right);
  // A row comes before the rows below it, which is what lexicographic order says of a prefix.
  return std::lexicographical_compare(l.begin(), l.end(), r.begin(), r.end());
}

template <class Iterator>
QStandardItem* FirstInDepthFirstOrder(Iterator begin, Iterator end) {
  QStandardItem* first = nullptr;
  for (auto it = begin; it != end; ++it) {
    if (!first || ComesBefore(*it, first)) {
      first = *it;
    }
  }
  return first;
}

}  // namespace

CPlanCodeIndex::CPlanCodeIndex(QStandardItemModel* model) : QObject(model), model_(model) {
  connect(model, &QAbstractItemModel::rowsInserted, this, &CPlanCodeIndex::onRowsInserted);
  connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &CPlanCodeIndex::onRowsAboutToBeRemoved);
  connect(model, &QAbstractItemModel::dataChanged, this, &CPlanCodeIndex::onDataChanged);
  connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &CPlanCodeIndex::markStale);
  connect(model, &QAbstractItemModel::modelReset, this, &CPlanCodeIndex::markStale);
  connect(model, &QAbstractItemModel::columnsInserted, this, &CPlanCodeIndex::onColumnsChanged);
  connect(model, &QAbstractItemModel::columnsRemoved, this, &CPlanCodeIndex::onColumnsChanged);
}

QStandardItem* CPlanCodeIndex::Find(const QString& code, bool is_group) {
  rebuildIfStale();
  const CodeHash& hash = is_group ? groups_ : plans_;
  const auto range = hash.equal_range(code);
  return FirstInDepthFirstOrder(range.first, range.second);
}

QStandardItem* CPlanCodeIndex::FindPlaying() {
  rebuildIfStale();
  return FirstInDepthFirstOrder(playing_.cbegin(), playing_.cend());
}

QStandardItem* CPlanCodeIndex::parentItem(const QModelIndex& parent) const {
  return parent.isValid() ? model_->itemFromIndex(parent) : model_->invisibleRootItem();
}

void CPlanCodeIndex::onRowsInserted(const QModelIndex& parent, int first, int last) {
  if (stale_) {
    return;
  }
  const QStandardItem* owner = parentItem(parent);
  for (int row = first; row <= last; ++row) {
    addSubtree(owner->child(row));
  }
}

void CPlanCodeIndex::onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
  const QStandardItem* owner = parentItem(parent);
  if (owner == model_->invisibleRootItem() && first == 0 && last == owner->rowCount() - 1) {
    groups_.clear();
    plans_.clear();
    playing_.clear();
    stale_ = false;
    return;
  }
  // A look-up by another receiver of the removal's signal must not take the going rows in.
  rebuildIfStale();
  for (int row = first; row <= last; ++row) {
    removeSubtree(owner->child(row));
  }
}

void CPlanCodeIndex::onDataChanged(const QModelIndex& top, const QModelIndex& bottom, const QVector<int>& roles) {
  if (stale_) {
    return;
  }
  // No roles means any of them; a whole row may even have been replaced.
  if (roles.isEmpty() || roles.contains(GroupIndexCodeRole) || roles.contains(PlanIndexCodeRole)) {
    markStale();
    return;
  }
  if (!roles.contains(PlayingRole)) {
    return;
  }
  const QStandardItem* owner = parentItem(top.parent());
  for (int row = top.row(); row <= bottom.row(); ++row) {
    renewPlaying(owner->child(row));
  }
}

void CPlanCodeIndex::onColumnsChanged(const QModelIndex& parent, int first) {
  // A row's first child brings the first column along, with no rows in it yet.
  if (first == 0 && model_->rowCount(parent) > 0) {
    markStale();
  }
}

void CPlanCodeIndex::markStale() {
  stale_ = true;
  groups_.clear();
  plans_.clear();
  playing_.clear();
}

void CPlanCodeIndex::rebuildIfStale() {
  if (!stale_) {
    return;
  }
  stale_ = false;
  const QStandardItem* root = model_->invisibleRootItem();
  for (int row = 0; row < root->rowCount(); ++row) {
    addSubtree(root->child(row));
  }
}

void CPlanCodeIndex::addSubtree(QStandardItem* item) {
  if (!item) {
    return;
  }
  const QString group_code = CodeOf(item, GroupIndexCodeRole);
  if (!group_code.isEmpty()) {
    groups_.insert(group_code, item);
  }
  const QString plan_code = CodeOf(item, PlanIndexCodeRole);
  if (!plan_code.isEmpty()) {
    plans_.insert(plan_code, item);
  }
  renewPlaying(item);
  for (int row = 0; row < item->rowCount(); ++row) {
    addSubtree(item->child(row));
  }
}

void CPlanCodeIndex::removeSubtree(QStandardItem* item) {
  if (!item) {
    return;
  }
  groups_.remove(CodeOf(item, GroupIndexCodeRole), item);
  plans_.remove(CodeOf(item, PlanIndexCodeRole), item);
  playing_.removeOne(item);
  for (int row = 0; row < item->rowCount(); ++row) {
    removeSubtree(item->child(row));
  }
}

void CPlanCodeIndex::renewPlaying(QStandardItem* item) {
  if (!item) {
    return;
  }
  const bool playing = item->data(PlayingRole).toBool();
  if (!playing) {
    playing_.removeOne(item);
  } else if (!playing_.contains(item)) {
    playing_.append(item);
  }
}

}  // namespace TarnPlanView
