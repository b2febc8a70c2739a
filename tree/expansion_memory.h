#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QPersistentModelIndex>
#include <QString>

#include "open_group.h"

class QAbstractItemModel;

namespace MarUIControl {
class CTreeView;
}

namespace TarnPlanView {

/// Remembers by code which groups of a tree are open, and opens them again when their rows come back after a reload.
/// Child of the tree. Thread: GUI.
class CExpansionMemory : public QObject {
  Q_OBJECT
 public:
  explicit CExpansionMemory(MarUIControl::CTreeView* tree);

  /// The tree shows another model: what was open there is awaited here.
  void Watch(QAbstractItemModel* model);
  /// Opens the group with this code, now or when its row comes in.
  void Await(const QString& group_code);
  /// The open groups, outer ones first; also those that are to open once their rows come in, unless the group that they
  /// stood in has come without them. Roots are not among them.
  OpenGroups Groups() const;
  /// These groups and no others but the roots are to be open, each as soon as its row comes in.
  void SetGroups(const OpenGroups& groups);

 private:
  void Remember(const QModelIndex& index);
  void Forget(const QModelIndex& index);
  void AwaitVanished();
  void Seek(const QModelIndex& parent, int first, int last);
  void SeekBelow(const QModelIndex& parent);
  void OpenFound();
  void AwaitRowsBelow(const QModelIndex& index);
  bool IsGone(const QString& awaited_code) const;

  MarUIControl::CTreeView* const tree_;
  QAbstractItemModel* model_ = nullptr;  // compared and asked only while the tree shows it
  struct Row {
    QPersistentModelIndex index;
    QString above;  // code of the group it stands in; empty for a root
  };
  QHash<QString, Row> opened_;       // rows that are there, by code
  QHash<QString, QString> awaited_;  // codes whose rows are not, and of the groups they stood in
  QList<QPersistentModelIndex> found_;
};

}  // namespace TarnPlanView
