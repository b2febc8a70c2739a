#pragma once

#include <QAbstractItemModel>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>

namespace TarnPlanView {

/// A row of a plan tree, held while a request runs.
///
/// Rows move and vanish in the meantime: the row is found again by its persistent index, else (after a reload) by its
/// code in the same model or proxy, and is invalid only when both fail. Thread: GUI, also for copies.
class CPlanNodeRef {
 public:
  CPlanNodeRef() = default;
  explicit CPlanNodeRef(const QModelIndex& index);

  /// Persistent; given to a signal as a live index (`qt/live_index.h`), so that its later receivers do not see another
  /// row when an earlier one has removed this one.
  QPersistentModelIndex Resolve() const;

 private:
  QPersistentModelIndex index_;
  QPointer<const QAbstractItemModel> model_;
  QString code_;
  bool is_group_ = false;
};

}  // namespace TarnPlanView
