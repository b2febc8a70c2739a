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

/// Of the rows it is given, the first in depth-first order.
class FirstRow {
 public:
  void Take(CodedRow& row) {
    if (!first_ || ComesBefore(row.row, first_->row)) {
      first_ = &row;
    }
  }
  CodedRow* Get() const { return first_; }

 private:
  CodedRow* first_ = nullptr;
};

}  // namespace

CPlanCodeIndex::CPlanCodeIndex(QStandardItemModel* model) : QObject(model), model_(model) {
  connect(model, &QAbstractItemModel::rowsInserted, this, &CPlanCodeIndex::onRowsInserted);
  connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &CPlanCodeIndex::onRowsAboutToBeRemoved);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &CPlanCodeIndex::onRowsRemoved);
  connect(model, &QAbstractItemModel::layoutChanged, this, [this] { ++moves_; });
  connect(model, &QAbstractItemModel::dataChanged, this, &CPlanCodeIndex::onDataChanged);
  connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &CPlanCodeIndex::markStale);
  connect(model, &QAbstractItemModel::modelReset, this, &CPlanCodeIndex::markStale);
  connect(model, &QAbstractItemModel::columnsInserted, this, &CPlanCodeIndex::onColumnsChanged);
  connect(model, &QAbstractItemModel::columnsRemoved, this, &CPlanCodeIndex::onColumnsChanged);
}

QStandardItem* CPlanCodeIndex::Find(const QString& code, bool is_group) {
  const CodedRow* found = find(code, is_group);
  return found ? found->row : nullptr;
}

CPlanCodeIndex::Place CPlanCodeIndex::FindPlace(const QString& code, bool is_group) {
  CodedRow* found = find(code, is_group);
  if (!found) {
    return {};
  }
  if (found->moves != moves_) {
    const QModelIndex index = found->row->index();
    found->parent = parentItem(index.parent());
    found->position = index.row();
    found->moves = moves_;
  }
  return {found->parent, found->position};
}

CodedRow* CPlanCodeIndex::find(const QString& code, bool is_group) {
  rebuildIfStale();
  const int role = is_group ? GroupIndexCodeRole : PlanIndexCodeRole;
  const CodeNumber number = NumberOfCode(code);
  FirstRow first;
  (is_group ? groups_ : plans_).ForEach(number, [&](CodedRow& row) {
    if (number.IsExact() || CodeOf(row.row, role) == code) {
      first.Take(row);
    }
  });
  return first.Get();
}

QStandardItem* CPlanCodeIndex::FindPlaying() {
  rebuildIfStale();
  QStandardItem* first = nullptr;
  for (QStandardItem* row : qAsConst(playing_)) {
    if (!first || ComesBefore(row, first)) {
      first = row;
    }
  }
  return first;
}

QStandardItem* CPlanCodeIndex::parentItem(const QModelIndex& parent) const {
  return parent.isValid() ? model_->itemFromIndex(parent) : model_->invisibleRootItem();
}

void CPlanCodeIndex::onRowsInserted(const QModelIndex& parent, int first, int last) {
  if (stale_) {
    return;
  }
  QStandardItem* owner = parentItem(parent);
  if (last < owner->rowCount() - 1) {
    ++moves_;
  }
  for (int row = first; row <= last; ++row) {
    addSubtree(owner, row);
  }
}

void CPlanCodeIndex::onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
  const QStandardItem* owner = parentItem(parent);
  if (owner == model_->invisibleRootItem() && first == 0 && last == owner->rowCount() - 1) {
    groups_.Clear();
    plans_.Clear();
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

void CPlanCodeIndex::onRowsRemoved(const QModelIndex& parent, int first) {
  if (first < model_->rowCount(parent)) {
    ++moves_;
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
  groups_.Clear();
  plans_.Clear();
  playing_.clear();
}

void CPlanCodeIndex::rebuildIfStale() {
  if (!stale_) {
    return;
  }
  stale_ = false;
  QStandardItem* root = model_->invisibleRootItem();
  for (int row = 0; row < root->rowCount(); ++row) {
    addSubtree(root, row);
  }
}

void CPlanCodeIndex::addSubtree(QStandardItem* parent, int row) {
  QStandardItem* item = parent->child(row);
  if (!item) {
    return;
  }
  const CodedRow coded{item, parent, row, moves_};
  const QString group_code = CodeOf(item, GroupIndexCodeRole);
  if (!group_code.isEmpty()) {
    groups_.Insert(NumberOfCode(group_code), coded);
  }
  const QString plan_code = CodeOf(item, PlanIndexCodeRole);
  if (!plan_code.isEmpty()) {
    plans_.Insert(NumberOfCode(plan_code), coded);
  }
  renewPlaying(item);
  for (int child = 0; child < item->rowCount(); ++child) {
    addSubtree(item, child);
  }
}

void CPlanCodeIndex::removeSubtree(QStandardItem* item) {
  if (!item) {
    return;
  }
  const auto is_item = [item](const CodedRow& held) { return held.row == item; };
  groups_.Take(NumberOfCode(CodeOf(item, GroupIndexCodeRole)), is_item);
  plans_.Take(NumberOfCode(CodeOf(item, PlanIndexCodeRole)), is_item);
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
