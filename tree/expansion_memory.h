#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QPersistentModelIndex>
#include <QSet>
#include <QString>

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

 private:
  void Remember(const QModelIndex& index);
  void Forget(const QModelIndex& index);
  void AwaitVanished();
  void Seek(const QModelIndex& parent, int first, int last);
  void SeekBelow(const QModelIndex& parent);
  void OpenFound();

  MarUIControl::CTreeView* const tree_;
  QAbstractItemModel* model_ = nullptr;           // compared and asked only while the tree shows it
  QHash<QString, QPersistentModelIndex> opened_;  // rows that are there
  QSet<QString> awaited_;                         // codes whose rows are not
  QList<QPersistentModelIndex> found_;
};

}  // namespace TarnPlanView
