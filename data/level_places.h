#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "row_record.h"

class QStandardItem;

namespace TarnPlanView {

/// The record by which a row is ordered; null for a row that has a name or a type of its own. Thread: GUI.
const CRowRecord* OrderingRecord(const QStandardItem* row);

/// The places of all rows of a level in its order, where each row is ordered by its record. The rows of several models
/// that are made of the same records, one by one, have the same. Never changes once made. Thread: any, unless said.
class CLevelPlaces {
 public:
  using Ptr = std::shared_ptr<const CLevelPlaces>;
  using Records = std::vector<CRowRecord::Ptr>;

  /// Orders the records, one of each row in the order of the rows.
  static Ptr Of(Records records);

  /// Records of which none stands before the other have the same place.
  quint32 OfRow(int row) const { return places_[row]; }
  /// Whether they are those of this level. Thread: GUI.
  bool AreOf(const QStandardItem* level) const;

  /// Known to all who sort a level of these records, as long as somebody holds them; the latest only. Thread: GUI.
  static void Share(const Ptr& places);
  /// Those that were shared, when they are those of this level, else null. Thread: GUI.
  static Ptr Known(const QStandardItem* level);

 private:
  CLevelPlaces(Records records, std::vector<quint32> places)
      : records_(std::move(records)), places_(std::move(places)) {}

  const Records records_;
  const std::vector<quint32> places_;
};

}  // namespace TarnPlanView
