#pragma once

#include <QString>
#include <QVariant>
#include <array>

#include "MarUIControl/collation_key.h"
#include "plan_rules/row_order.h"

namespace TarnPlanView {

class CRowRecord;

/// What a row is ordered by but its name: rows without a type stand first, and so do, among rows of one type, those
/// without a name.
struct RowRank {
  int type = -1;
  bool has_name = false;
};
/// -1 for a value that is none.
int RankOfType(const QVariant& type);
template <class ByName>
bool StandsBefore(const RowRank& left, const RowRank& right, const ByName& by_name) {
  return view_plugin_protocol::StandsBefore(left.type, right.type, [&] {
    if (!left.has_name || !right.has_name) {
      return !left.has_name;
    }
    return by_name();
  });
}

/// All that a row is ordered by, ready for many comparisons. Key and name are somebody else's.
struct OrderedRow {
  std::array<quint64, 2> head{};  // of the key
  const MarUIControl::CollationKey* key = nullptr;
  const QString* name = nullptr;
  RowRank rank;

  void SetName(const QString& text, const MarUIControl::CollationKey& text_key);
  /// A row that shows the type and the name of its record.
  static OrderedRow Of(const CRowRecord& record);
};
bool StandsBefore(const OrderedRow& left, const OrderedRow& right);

}  // namespace TarnPlanView
