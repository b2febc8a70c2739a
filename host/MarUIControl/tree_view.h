#pragma once

#include <QPersistentModelIndex>
#include <memory>

#include "MarUIControl/abstract_item_view.h"
#include "host_export.h"

namespace MarUIControl {

/// Tree whose rows fetch their children when the user first expands them.
///
/// A row is fetched at most once at a time: AsynchronousExpand() is emitted by the user's gesture (expander, double
/// click on a row that can have children, keys) or by ExpandAsync(), never by expand(), and is held back while the
/// row waits. While a row waits it shows a waiting mark in place of its expander. What counts as fetched is the
/// view's own record, made by FinishExpand(): a row whose fetch failed keeps its expander and can be tried again.
/// Keys: Right, Plus, Return and Enter expand the current row, Asterisk also what is fetched below it; Return and
/// Enter on an expanded row collapse it. Thread: GUI.
class TARN_HOST_EXPORT CTreeView : public CAbstractItemView {
  Q_OBJECT
 public:
  explicit CTreeView(QWidget* parent = nullptr);
  ~CTreeView() override;

  /// Not owned. What was fetched of another model, or waited for, is forgotten; so it is when the model is reset.
  void setModel(QAbstractItemModel* model) override;

  /// As if the user had asked for `index` (an index of this view's model) to be expanded; one that is fetched expands
  /// at once. Nothing for any other index.
  void ExpandAsync(const QModelIndex& index);

  /// The answer to AsynchronousExpand() for `index` (an index of this view's model) is there: the waiting mark goes;
  /// with `fetched` the row counts as fetched from now on, otherwise it can be tried again; with `expand` it expands.
  void FinishExpand(const QModelIndex& index, bool expand, bool fetched);

  /// Ends all waiting without an answer: those rows can be tried again.
  void ForgetWaiting();

  /// Whether the row's children are being fetched: from AsynchronousExpand() to FinishExpand().
  bool IsWaiting(const QModelIndex& index) const;

 Q_SIGNALS:
  /// Fetch the children of this row; to be answered by FinishExpand().
  void AsynchronousExpand(const QModelIndex& index);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  void dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right, const QVector<int>& roles) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace MarUIControl
