#pragma once

#include <QModelIndex>
#include <array>
#include <deque>
#include <vector>

#include "MarUIControl/collation_key.h"
#include "plan_rules/row_order.h"

class QStandardItem;

namespace TarnPlanView {

class CStandardPlanModel;

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

/// The order of a plan tree's rows of one level.
///
/// A long sort asks for each row some twenty times: what its rows are compared by is read once then, into one block,
/// and is to be forgotten with every change of the tree. Thread: GUI.
class CLevelOrder {
 public:
  explicit CLevelOrder(const CStandardPlanModel* tree) : tree_(tree) {}

  /// Both of the tree, and valid.
  bool IsBefore(const QModelIndex& left, const QModelIndex& right);
  void Forget();
  /// Whether a level was read, which takes memory until it is forgotten.
  bool HoldsLevel() const { return !entries_.empty(); }

 private:
  /// A row's rank and what its name is compared by.
  struct Entry {
    std::array<quint64, 2> head{};
    const MarUIControl::CollationKey* key = nullptr;
    const QStandardItem* row = nullptr;
    RowRank rank;
  };
  using Keys = std::deque<MarUIControl::CollationKey>;  // of names that no record has a key for

  static Entry EntryOf(const QStandardItem* row, Keys& keys);
  static bool EntryIsBefore(const Entry& left, const Entry& right);
  void readLevel(const QStandardItem* level);

  const CStandardPlanModel* tree_;
  const void* level_ = nullptr;
  int comparisons_ = 0;
  std::vector<Entry> entries_;
  Keys keys_;
};

}  // namespace TarnPlanView
