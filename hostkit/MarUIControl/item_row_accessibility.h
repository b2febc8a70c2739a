#pragma once

#include <QAbstractItemView>
#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>

class QTreeView;

namespace MarUIControl {

/// What assistive technology learns of a row, or of one column of it, and can do with it. Goes with the row: then it
/// is not valid any more. Thread: GUI.
class CRowInterface : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  CRowInterface(QAbstractItemView* view, const QModelIndex& index) : view_(view), index_(index) {}

  QModelIndex Index() const { return index_; }
  /// Neither the current row nor in sight.
  bool IsOutOfTheWay() const;

  bool isValid() const override { return view_ && index_.isValid() && index_.model() == view_->model(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return view_ ? view_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  void setText(QAccessible::Text, const QString&) override {}
  QString text(QAccessible::Text kind) const override;
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;
  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QTreeView* Tree() const;
  bool IsCheckable() const { return index_.data(Qt::CheckStateRole).isValid(); }
  QString NothingThere() const;
  QString Place() const;
  void AddStateInTree(QAccessible::State* state) const;
  void Press(Qt::Key key);

  const QPointer<QAbstractItemView> view_;
  const QPersistentModelIndex index_;
};

/// The title of a column of a tree; out of sight where the tree shows none. Thread: GUI.
class CTitleInterface : public QAccessibleInterface {
 public:
  CTitleInterface(QTreeView* tree, int column);

  bool isValid() const override;
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  void setText(QAccessible::Text, const QString&) override {}
  QString text(QAccessible::Text kind) const override;
  QRect rect() const override;
  QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
  QAccessible::State state() const override;

 private:
  const QPointer<QTreeView> tree_;
  const int column_;
};

}  // namespace MarUIControl
