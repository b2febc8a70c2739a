#pragma once

#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QString>

#include "standard_view_controller.h"

class QModelIndex;
class QWidget;

namespace TarnPlanView {

struct DeletionSubject;

/// A row that was deleted, as undoing it needs it.
struct DeletedRow {
  bool is_group = false;
  QString code, parent_code, name;
  QString notice;  // what was deleted, in a sentence
  int restorable_seconds = 0;
};

/// Deletes a row of the tree once the user has said yes. A row that has gone while the question was open is left alone,
/// and one that is being deleted is not deleted once more before the answer has come. Thread: GUI.
class CRowDeletion : public QObject {
  Q_OBJECT
 public:
  /// Questions stand over the window of `panel`.
  explicit CRowDeletion(QWidget* panel);

  /// Not owned; may die first.
  void SetController(CStandardViewController* controller);
  void Delete(const QModelIndex& row);
  /// Takes it back, or the controller says why that is not possible.
  void Undo(const DeletedRow& row);
  /// Questions that are open and deletions under way count for nothing any more.
  void Drop();

 Q_SIGNALS:
  /// The plan that is about to be deleted plays. A receiver may end the panel.
  void SignalStopPlan();
  /// The row is gone, and for its seconds Undo() brings it back.
  void SignalDeleted(const DeletedRow& row);
  /// Not yet, for the service did not answer.
  void SignalStillDeleted(const DeletedRow& row);
  void SignalRestored(const DeletedRow& row);

 private:
  using Row = QPair<bool, QString>;  // whether it is a group, and its code

  bool HasChildren(const QModelIndex& group) const;
  bool Confirm(const DeletionSubject& subject);
  void DeleteGroup(const QModelIndex& index);
  void DeletePlan(const QModelIndex& index);
  CStandardViewController::PlanAnswer Note(const Row& row, const QModelIndex& index, const DeletionSubject& subject);

  QWidget* const panel_;
  QPointer<CStandardViewController> controller_;
  QSet<Row> deleting_;
  int session_ = 0;
};

}  // namespace TarnPlanView
