#include "level_order.h"

#include "plan_item_role.h"

namespace TarnPlanView {

namespace {
constexpr size_t kShortSort = 100;  // comparisons; one changed row needs fewer among any number of siblings
}

bool CLevelOrder::isBeforeWithoutPlaces(const QModelIndex& left, const QModelIndex& right) {
  const auto* level = static_cast<const QStandardItem*>(left.internalPointer());
  if (level != level_) {
    Forget();
    level_ = level;
  }
  if (!isOfLevel(left) || !isOfLevel(right) || ++comparisons_ <= kShortSort) {
    OwnNames own_names;
    return StandsBefore(OrderedRowOf(tree_->itemFromIndex(left), own_names),
                        OrderedRowOf(tree_->itemFromIndex(right), own_names));
  }
  return isBeforeInLevel(left.row(), right.row());
}

// More comparisons than there are rows are a sort of all of them, which costs less in one block.
bool CLevelOrder::isBeforeInLevel(int left, int right) {
  if (rows_.empty()) {
    places_ = CLevelPlaces::Known(level_);
    if (!places_) {
      readLevel();
    }
  } else if (comparisons_ > rows_.size() && can_be_placed_) {
    placeRows();
  }
  if (places_) {
    return places_->OfRow(left) < places_->OfRow(right);
  }
  return StandsBefore(rows_[left], rows_[right]);
}

void CLevelOrder::Forget() {
  level_ = nullptr;
  comparisons_ = 0;
  rows_ = {};
  own_names_ = {};
  places_.reset();
}

// Not all rows have places: of two without a name each stands before the other.
void CLevelOrder::readLevel() {
  can_be_placed_ = true;
  rows_.reserve(level_->rowCount());
  for (int row = 0; row < level_->rowCount(); ++row) {
    const QStandardItem* item = level_->child(row);
    rows_.push_back(OrderedRowOf(item, own_names_));
    can_be_placed_ = can_be_placed_ && OrderingRecord(item);
  }
}

void CLevelOrder::placeRows() {
  CLevelPlaces::Records records;
  records.reserve(rows_.size());
  for (int row = 0; row < level_->rowCount(); ++row) {
    records.emplace_back(OrderingRecord(level_->child(row)));
  }
  places_ = CLevelPlaces::Of(std::move(records));
  CLevelPlaces::Share(places_);
  rows_ = {};
}

OrderedRow CLevelOrder::OrderedRowOf(const QStandardItem* row, OwnNames& own_names) {
  if (!row) {
    return {};
  }
  if (const CRowRecord* record = OrderingRecord(row)) {
    return OrderedRow::Of(*record);
  }
  OrderedRow ordered;
  ordered.rank.type = RankOfType(row->data(ItemTypeRole));
  const QVariant name = row->data(Qt::DisplayRole);
  if (name.isValid()) {
    const OwnName& own = own_names.emplace_back(name.toString(), MarUIControl::RecentCollationKey(name.toString()));
    ordered.SetName(own.first, own.second);
  }
  return ordered;
}

}  // namespace TarnPlanView
