#include "ordered_row.h"

#include "row_record.h"

namespace TarnPlanView {

int RankOfType(const QVariant& type) {
  bool ok = false;
  const int rank = type.toInt(&ok);
  if (!ok) {
    return -1;
  }
  return rank;
}

void OrderedRow::SetName(const QString& text, const MarUIControl::CollationKey& text_key) {
  head = text_key.head;
  key = &text_key;
  name = &text;
  rank.has_name = true;
}

OrderedRow OrderedRow::Of(const CRowRecord& record) {
  OrderedRow row;
  row.rank.type = record.ItemType();
  row.SetName(record.Name(), record.NameKey());
  return row;
}

bool StandsBefore(const OrderedRow& left, const OrderedRow& right) {
  return StandsBefore(left.rank, right.rank, [&left, &right] {
    for (const size_t part : {0, 1}) {
      if (left.head[part] != right.head[part]) {
        return left.head[part] < right.head[part];
      }
    }
    const int order = left.key->Compare(*right.key);
    return order < 0 || (order == 0 && view_plugin_protocol::NameStandsBefore(*left.name, *right.name));
  });
}

}  // namespace TarnPlanView
