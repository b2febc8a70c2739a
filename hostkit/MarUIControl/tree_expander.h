#pragma once

#include <QTreeView>

namespace MarUIControl {

/// Where the expanders of a tree view stand, and the mark in their place while a row waits. Thread: GUI.
struct TreeExpander {
  /// The row whose expander is at this point of the viewport, whether it shows one or not; invalid for none.
  static QModelIndex RowAt(const QTreeView& view, const QPoint& position);
  /// The expander's part of what drawBranches() is to paint.
  static QRect Place(const QTreeView& view, const QRect& branches);
  /// `frame`: how far the mark has turned, from 0 to kFramesPerTurn.
  static void DrawWaitingMark(QPainter* painter, const QRect& expander, const QColor& color, int frame);

  static constexpr int kFramesPerTurn = 12;
};

}  // namespace MarUIControl
