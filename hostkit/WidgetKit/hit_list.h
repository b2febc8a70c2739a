#pragma once

#include <QPersistentModelIndex>
#include <QVector>

namespace WidgetKit {

/// The rows found and the one of them the user has stepped to. Rows that have gone are skipped. Thread: GUI.
class HitList {
 public:
  void Clear();
  /// `count`: how many there are, which may be more than are listed. Keeps the row stepped to where it is still there.
  void Set(const QVector<QModelIndex>& hits, int count);
  /// The hit so many further, around the ends; invalid when none is left.
  QModelIndex Step(int by);

  int Count() const { return count_; }
  /// Place of the row stepped to, from 0; -1 for none.
  int Current() const { return current_; }
  bool Contains(const QModelIndex& index) const { return hits_.contains(index); }
  /// Whether all hits are listed.
  bool IsComplete() const { return count_ == hits_.size(); }

 private:
  QVector<QPersistentModelIndex> hits_;
  int count_ = 0;
  int current_ = -1;
};

}  // namespace WidgetKit
