#pragma once

#include <QPair>
#include <QSortFilterProxyModel>
#include <memory>

namespace TarnPlanView {

/// Sorts each level of a plan tree by item type, then name; with filtering on it keeps only the roots and groups that
/// the user may use as a target.
///
/// The flags take effect at the next filter pass: after a change of one the filter is to be invalidated. Rights are
/// asked for every row of family 0 at every pass; family 1 needs none. Thread: GUI.
class CViewSortFilterProxyModel : public QSortFilterProxyModel {
  Q_OBJECT
 public:
  CViewSortFilterProxyModel(QObject* parent, bool filterEnabled);
  CViewSortFilterProxyModel(QObject* parent, bool filterEnabled, bool showTheme2);
  ~CViewSortFilterProxyModel() override;

  void setSourceModel(QAbstractItemModel* source) override;

  void SetFilterEnabled(bool enabled);
  /// Add mode asks for the right to add, edit mode for the right to edit.
  void SetAddOrEdit(bool add);
  /// Item types of both rows, -1 for a row without one.
  QPair<int, int> GetIndexType(const QModelIndex& left, const QModelIndex& right) const;

  /// Without a filter a row has its children here, too; asking does not sort them, as it does in the base class, unless
  /// they are so many that opening the row would be slow.
  bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
  bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  bool isPublicTarget() const;
  void takeInBeforeLastOnesGo(const QModelIndex& sourceParent, int first, int last);
  void listenBeforeTheBase(QAbstractItemModel* source);
  void forgetLevel();

  struct Data;
  std::unique_ptr<Data> data_;
};

}  // namespace TarnPlanView
