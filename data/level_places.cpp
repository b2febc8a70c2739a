#include "level_places.h"

#include <QStandardItem>
#include <algorithm>
#include <numeric>

#include "ordered_row.h"
#include "plan_item_role.h"
#include "record_item.h"

namespace TarnPlanView {

namespace {

std::vector<quint32> PlacesOf(const CLevelPlaces::Records& records) {
  std::vector<OrderedRow> rows;
  rows.reserve(records.size());
  for (const CRowRecord::Ptr& record : records) {
    rows.push_back(OrderedRow::Of(*record));
  }
  std::vector<quint32> sorted(rows.size());
  std::iota(sorted.begin(), sorted.end(), 0);
  std::sort(sorted.begin(), sorted.end(),
            [&rows](quint32 left, quint32 right) { return StandsBefore(rows[left], rows[right]); });
  std::vector<quint32> places(rows.size());
  for (size_t at = 1; at < sorted.size(); ++at) {
    const bool is_behind = StandsBefore(rows[sorted[at - 1]], rows[sorted[at]]);
    places[sorted[at]] = places[sorted[at - 1]] + (is_behind ? 1 : 0);
  }
  return places;
}

// Holds none itself, so no record is kept for it.
std::weak_ptr<const CLevelPlaces>& Shared() {
  static std::weak_ptr<const CLevelPlaces> shared;
  return shared;
}

}  // namespace

const CRowRecord* OrderingRecord(const QStandardItem* row) {
  const CRecordItem* item = CRecordItem::Of(row);
  if (item && item->IsFromRecord(Qt::DisplayRole) && item->IsFromRecord(ItemTypeRole)) {
    return &item->Record();
  }
  return nullptr;
}

CLevelPlaces::Ptr CLevelPlaces::Of(Records records) {
  std::vector<quint32> places = PlacesOf(records);
  return Ptr(new CLevelPlaces(std::move(records), std::move(places)));
}

bool CLevelPlaces::AreOf(const QStandardItem* level) const {
  if (level->rowCount() != static_cast<int>(records_.size())) {
    return false;
  }
  for (int row = 0; row < level->rowCount(); ++row) {
    if (OrderingRecord(level->child(row)) != records_[row].constData()) {
      return false;
    }
  }
  return true;
}

void CLevelPlaces::Share(const Ptr& places) {
  Shared() = places;
}

CLevelPlaces::Ptr CLevelPlaces::Known(const QStandardItem* level) {
  const Ptr shared = Shared().lock();
  return shared && shared->AreOf(level) ? shared : nullptr;
}

}  // namespace TarnPlanView
