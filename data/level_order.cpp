#include "level_order.h"

#include "plan_item_role.h"
#include "record_item.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {
constexpr int kShortSort = 100;  // comparisons; one changed row needs fewer among any number of siblings
}

int RankOfType(const QVariant& type) {
  bool ok = false;
  const int rank = type.toInt(&ok);
  if (!ok) {
    return -1;
  }
  return rank;
}

bool CLevelOrder::IsBefore(const QModelIndex& left, const QModelIndex& right) {
  const void* level = left.internalPointer();
  if (level != level_) {
    Forget();
    level_ = level;
  }
  const bool is_of_level = right.internalPointer() == level && left.column() == 0 && right.column() == 0;
  if (!is_of_level || (entries_.empty() && ++comparisons_ <= kShortSort)) {
    Keys keys;
    return EntryIsBefore(EntryOf(tree_->itemFromIndex(left), keys), EntryOf(tree_->itemFromIndex(right), keys));
  }
  if (entries_.empty()) {
    readLevel(static_cast<const QStandardItem*>(level));
  }
  return EntryIsBefore(entries_[left.row()], entries_[right.row()]);
}

void CLevelOrder::Forget() {
  level_ = nullptr;
  comparisons_ = 0;
  entries_ = {};
  keys_ = {};
}

void CLevelOrder::readLevel(const QStandardItem* level) {
  entries_.reserve(level->rowCount());
  for (int row = 0; row < level->rowCount(); ++row) {
    entries_.push_back(EntryOf(level->child(row), keys_));
  }
}

CLevelOrder::Entry CLevelOrder::EntryOf(const QStandardItem* row, Keys& keys) {
  Entry entry;
  if (!row) {
    return entry;
  }
  entry.row = row;
  entry.rank.type = RankOfType(row->data(ItemTypeRole));
  const auto* with_record = dynamic_cast<const CRecordItem*>(row);
  if (with_record && with_record->IsFromRecord(Qt::DisplayRole)) {
    entry.key = &with_record->Record().NameKey();
  } else {
    const QVariant name = row->data(Qt::DisplayRole);
    if (!name.isValid()) {
      return entry;
    }
    keys.push_back(MarUIControl::RecentCollationKey(name.toString()));
    entry.key = &keys.back();
  }
  entry.rank.has_name = true;
  entry.head = entry.key->head;
  return entry;
}

bool CLevelOrder::EntryIsBefore(const Entry& left, const Entry& right) {
  return StandsBefore(left.rank, right.rank, [&left, &right] {
    if (left.head != right.head) {
      return left.head < right.head;
    }
    const int order = left.key->Compare(*right.key);
    return order < 0 || (order == 0 && view_plugin_protocol::NameStandsBefore(left.row->text(), right.row->text()));
  });
}

}  // namespace TarnPlanView
