#include "plan_code_index.h"

#include <QStandardItemModel>
#include <algorithm>
#include <iterator>

#include "plan_item_role.h"
#include "record_item.h"

namespace TarnPlanView {

using view_plugin_protocol::CodeNumber;
using view_plugin_protocol::NumberOfCode;

namespace {

constexpr int kFetchedAhead = 12;  // look-ups whose memory is under way at a time

QString CodeOf(const QStandardItem* item, int role) {
  return item->data(role).toString();
}

int RoleOf(bool is_group) {
  if (is_group) {
    return GroupIndexCodeRole;
  }
  return PlanIndexCodeRole;
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

QVector<CRowRecord::Ptr> CPlanCodeIndex::WithoutRow(const QVector<CRowRecord::Ptr>& records) {
  rebuildIfStale();
  const auto fetch = [this](const CRowRecord::Ptr& record) { tableOf(record->IsGroup()).Fetch(record->Number()); };
  const int ahead = qMin(kFetchedAhead, records.size());
  const CRowRecord::Ptr* const end = records.constData() + records.size();
  std::for_each(records.cbegin(), records.cbegin() + ahead, fetch);
  const auto has_row = [&](const CRowRecord::Ptr& record) {
    if (&record + ahead < end) {
      fetch(*(&record + ahead));
    }
    return record->HasCode() && findNumber(record->Number(), record->IsGroup(), [&record](const CodedRow& row) {
             return CodeOf(row.row, RoleOf(record->IsGroup())) == record->Code();
           });
  };
  const auto first = std::find_if(records.cbegin(), records.cend(), has_row);
  if (first == records.cend()) {
    return records;  // mostly so; the list is shared then
  }
  QVector<CRowRecord::Ptr> missing = records.mid(0, static_cast<int>(first - records.cbegin()));
  std::remove_copy_if(first + 1, records.cend(), std::back_inserter(missing), has_row);
  return missing;
}

CodedRow* CPlanCodeIndex::find(const QString& code, bool is_group) {
  return findNumber(NumberOfCode(code), is_group,
                    [&](const CodedRow& row) { return CodeOf(row.row, RoleOf(is_group)) == code; });
}

template <class IsIt>
CodedRow* CPlanCodeIndex::findNumber(CodeNumber number, bool is_group, IsIt is_it) {
  rebuildIfStale();
  FirstRow first;
  tableOf(is_group).ForEach(number, [&](CodedRow& row) {
    if (number.IsExact() || is_it(row)) {
      first.Take(row);
    }
  });
  return first.Get();
}

view_plugin_protocol::CCodeTable<CodedRow>& CPlanCodeIndex::tableOf(bool is_group) {
  if (is_group) {
    return groups_;
  }
  return plans_;
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
  if (const CRecordItem* row = CRecordItem::Of(owner->child(last))) {  // many are mostly of one kind
    tableOf(row->Record().IsGroup()).Reserve(static_cast<size_t>(last - first) + 1);
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
  addRow({item, parent, row, moves_});
  for (int child = 0; child < item->rowCount(); ++child) {
    addSubtree(item, child);
  }
}

// Rows that nothing was set in are not asked: a value of theirs is made for each call.
void CPlanCodeIndex::addRow(const CodedRow& coded) {
  const CRecordItem* row = CRecordItem::Of(coded.row);
  if (row && row->IsAsMade() && row->Record().HasCode()) {
    tableOf(row->Record().IsGroup()).Insert(row->Record().Number(), coded);
    return;
  }
  for (const bool is_group : {true, false}) {
    const QString code = CodeOf(coded.row, RoleOf(is_group));
    if (!code.isEmpty()) {
      tableOf(is_group).Insert(NumberOfCode(code), coded);
    }
  }
  renewPlaying(coded.row);
}

void CPlanCodeIndex::removeSubtree(QStandardItem* item) {
  if (!item) {
    return;
  }
  const auto is_item = [item](const CodedRow& held) { return held.row == item; };
  for (const bool is_group : {true, false}) {
    tableOf(is_group).Take(NumberOfCode(CodeOf(item, RoleOf(is_group))), is_item);
  }
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
