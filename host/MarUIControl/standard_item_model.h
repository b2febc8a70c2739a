#pragma once

#include <QStandardItemModel>

#include "MarUIControl/model_key_mapping.h"
#include "host_export.h"

namespace MarUIControl {

class CTreeView;

/// Item model of the host's tree control.
///
/// A row whose role 581 is true reports hasChildren() and canFetchMore() until SetChildrenFetched(index) is called, so
/// that it shows its expander before its children were asked for; rows that came in one by one do not end that.
/// After it the rows that are there decide. Thread: GUI, but for CustomStringCompare().
class TARN_HOST_EXPORT CStandardItemModel : public QStandardItemModel, public CModelKeyMapping {
  Q_OBJECT
 public:
  explicit CStandardItemModel(QObject* parent = nullptr);
  ~CStandardItemModel() override;

  bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  /// Does nothing: the host's tree fetches through AsynchronousExpand().
  void fetchMore(const QModelIndex& parent) override;

  /// Records that the children of `index` are known (or not any more). Emits dataChanged of the row.
  void SetChildrenFetched(const QModelIndex& index, bool fetched);
  /// As recorded last; false at first.
  bool AreChildrenFetched(const QModelIndex& index) const;

  /// Whether `left` sorts before `right`; a strict weak order in every mode. Mode 0: by code point; 1: by code point,
  /// case folded; 2: names for people (numbers by value, case-insensitive, ties case-sensitive). Collation keys of
  /// recent texts are kept per thread. Thread: any.
  static bool CustomStringCompare(const QString& left, const QString& right, int mode);

 private:
  friend class CTreeView;
  // Role of the flag behind SetChildrenFetched(); private to the host's library.
  enum { ChildrenFetchedRole = 582 };
};

}  // namespace MarUIControl
