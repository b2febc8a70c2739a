#include "ResourceTreeKit/camera_tree_state.h"

#include <QScrollBar>

namespace ResourceTreeKit {

QSet<CameraRowKey> CCameraTreeState::Expanded(const QTreeView& view, const CCameraModel& model) {
  QSet<CameraRowKey> keys;
  const auto take = [&](const QModelIndex& index) {
    if (index.isValid() && view.isExpanded(index)) {
      keys.insert(model.KeyOf(index));
    }
  };
  take(model.Find(CameraRowKey::Favorites()));
  const std::vector<CCameraContent::Node>& nodes = model.Content().Nodes();
  for (size_t node = 1; node < nodes.size(); ++node) {
    if (nodes[node].child_count > 0) {
      take(model.IndexOfNode(static_cast<int>(node)));
    }
  }
  return keys;
}

void CCameraTreeState::Expand(QTreeView* view, const CCameraModel& model, const QSet<CameraRowKey>& keys) {
  for (const CameraRowKey& key : keys) {
    const QModelIndex row = model.Find(key);
    if (row.isValid()) {
      view->expand(row);
    }
  }
}

CCameraTreeState CCameraTreeState::Take(const QTreeView& view, const CCameraModel& model) {
  CCameraTreeState state;
  state.current_ = model.KeyOf(view.currentIndex());
  const QModelIndexList rows = view.selectionModel()->selectedIndexes();
  for (const QModelIndex& row : rows) {
    state.selected_.append(model.KeyOf(row));
  }
  const QModelIndex top = view.indexAt(QPoint(0, 0));
  state.top_ = model.KeyOf(top);
  state.top_offset_ = view.visualRect(top).top();
  state.scrolled_ = view.verticalScrollBar()->value();
  return state;
}

void CCameraTreeState::Restore(QTreeView* view, const CCameraModel& model, View where) const {
  const QModelIndex current = model.Find(current_);
  for (QModelIndex above = current.parent(); where == kShowCurrent && above.isValid(); above = above.parent()) {
    view->expand(above);
  }
  QItemSelection selection;
  for (const CameraRowKey& key : selected_) {
    const QModelIndex row = model.Find(key);
    if (row.isValid()) {
      selection.select(row, row);
    }
  }
  view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  const bool scrolls = view->hasAutoScroll();
  view->setAutoScroll(scrolls && where == kShowCurrent);
  if (current.isValid()) {
    view->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  }
  view->setAutoScroll(scrolls);
  if (where == kStay) {
    RestoreTop(view, model);
  }
}

void CCameraTreeState::RestoreTop(QTreeView* view, const CCameraModel& model) const {
  const QModelIndex top = model.Find(top_);
  QScrollBar* bar = view->verticalScrollBar();
  if (top.isValid()) {
    view->scrollTo(top, QAbstractItemView::PositionAtTop);
    if (view->verticalScrollMode() == QAbstractItemView::ScrollPerPixel) {
      bar->setValue(bar->value() - top_offset_);
    }
  } else {
    bar->setValue(scrolled_);
  }
}

}  // namespace ResourceTreeKit
