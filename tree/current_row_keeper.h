#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <optional>

#include "plan_node_ref.h"

class QAbstractItemModel;
class QModelIndex;

namespace TarnPlanView {

class CPlanViewTree;

/// Keeps the user's row current over what takes rows away and brings them back: a load of everything, a plan that is
/// saved or moved, a plan that was edited here. It stops where the user has gone on by himself. Child of the tree.
/// Thread: GUI.
class CCurrentRowKeeper : public QObject {
  Q_OBJECT
 public:
  explicit CCurrentRowKeeper(CPlanViewTree* tree);

  /// The rows of the tree. To be called before the tree gets them: a row that goes is seen while it is current.
  void Watch(QAbstractItemModel* rows);
  /// From false on nothing is kept, for the rows are another user's.
  void SetKeeping(bool keeping);

  void OnCurrentChanged(const QModelIndex& current, const QModelIndex& previous);
  /// Rows have come: what they are awaited for becomes current.
  void OnRowsChanged();
  /// A plan was changed, here or elsewhere: the current one, whose row went for that, is current again.
  void OnPlanUpdated(const QString& plan_code);
  /// The plan that was edited becomes current, as soon as its group is loaded.
  void OnPlanStored(const QString& plan_code, const QString& group_code);
  /// The row, which has just come to this group, becomes current, as soon as the group is loaded, unless the user goes
  /// on to another before. False when the group is in no row and none is being loaded.
  bool Reveal(const QString& code, bool is_group, const QString& group_code);
  /// The plan is being moved: RevealMoved() will do what Reveal() does, unless the user
  /// goes on to another row before.
  void OnMoving(const QString& plan_code);
  void RevealMoved(const QString& plan_code, const QString& group_code);
  /// With its parent expanded; false for a row that is not loaded.
  bool MakeCurrent(const QString& code, bool is_group = false);

 private:
  void OnRemoval(const QModelIndex& parent, int first, int last);
  void AwaitReload(const QModelIndex& row);
  void Approach();
  /// The row becomes current without counting as one that the user has gone on to.
  void SetCurrent(const QModelIndex& row);

  /// A row of a group that is being fetched; not approached while a load has yet to bring the group itself.
  struct AwaitedRow {
    QString code, group;
    bool is_group = false, approached = false;
  };

  CPlanViewTree* const tree_;
  bool keeping_ = true, setting_ = false;
  QString removed_;                          // code of the plan whose row went while it was current
  std::optional<CPlanNodeRef> before_load_;  // the row where a load found the user
  std::optional<AwaitedRow> saved_;
  QSet<QString> moving_;  // plans that are on their way while the user has stayed at his row
};

}  // namespace TarnPlanView
