#pragma once

#include <QExplicitlySharedDataPointer>
#include <QObject>
#include <QVector>

#include "plan_rules/code_table.h"

class QStandardItem;
class QStandardItemModel;

namespace TarnPlanView {

class CRowRecord;

/// A row, and where it stood when the rows of its model had moved so many times.
struct CodedRow {
  QStandardItem* row = nullptr;
  QStandardItem* parent = nullptr;
  int position = 0;
  uint moves = 0;

  explicit operator bool() const { return row; }
};

/// Finds the rows of one model by code and by playing mark, at a cost that does not grow with the model.
///
/// The answers are those of a depth-first search from the first row: of several rows with one code the first in
/// depth-first order. Follows the model through its own signals, so rows must not leave it by takeChild(), which sends
/// none. To be made before anything else connects to the model, so that others already see it renewed. Thread: the
/// model's.
class CPlanCodeIndex : public QObject {
  Q_OBJECT
 public:
  /// Where a row stands; without a parent it stands nowhere.
  struct Place {
    QStandardItem* parent = nullptr;  // the invisible root for a row of the top level
    int row = 0;
  };

  explicit CPlanCodeIndex(QStandardItemModel* model);

  /// The first row whose role 666 (group) or 661 (plan) equals `code`, or null. `code` must not be empty.
  QStandardItem* Find(const QString& code, bool is_group);
  /// The same row's place.
  Place FindPlace(const QString& code, bool is_group);
  /// Those of the records, plans' or groups', whose code no row has; in their order.
  QVector<QExplicitlySharedDataPointer<const CRowRecord>> WithoutRow(
      const QVector<QExplicitlySharedDataPointer<const CRowRecord>>& records);
  /// The first row whose role 673 is true, or null.
  QStandardItem* FindPlaying();

 private:
  void onRowsInserted(const QModelIndex& parent, int first, int last);
  void onRowsAboutToBeRemoved(const QModelIndex& parent, int first, int last);
  void onRowsRemoved(const QModelIndex& parent, int first);
  void onDataChanged(const QModelIndex& top, const QModelIndex& bottom, const QVector<int>& roles);
  void onColumnsChanged(const QModelIndex& parent, int first);
  void markStale();

  QStandardItem* parentItem(const QModelIndex& parent) const;
  void rebuildIfStale();
  view_plugin_protocol::CCodeTable<CodedRow>& tableOf(bool is_group);
  CodedRow* find(const QString& code, bool is_group);
  /// `is_it` tells rows apart that share a number.
  template <class IsIt>
  CodedRow* findNumber(view_plugin_protocol::CodeNumber number, bool is_group, IsIt is_it);
  void addSubtree(QStandardItem* parent, int row);
  void addRow(const CodedRow& coded);
  void removeSubtree(QStandardItem* item);
  void renewPlaying(QStandardItem* item);

  QStandardItemModel* model_;
  view_plugin_protocol::CCodeTable<CodedRow> groups_;
  view_plugin_protocol::CCodeTable<CodedRow> plans_;
  QVector<QStandardItem*> playing_;
  // Codes changed in place or the model was reset: the tables are filled again when next asked.
  bool stale_ = false;
  // How often rows moved: the places noted before the last time are looked up again when next asked for.
  uint moves_ = 0;
};

}  // namespace TarnPlanView
