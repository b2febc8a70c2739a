#include "MarUIControl/tree_expander.h"

#include <QPainter>

namespace MarUIControl {

QModelIndex TreeExpander::RowAt(const QTreeView& view, const QPoint& position) {
  const QModelIndex cell = view.indexAt(position);
  const QModelIndex row = cell.sibling(cell.row(), 0);
  if (!row.isValid() || (!view.rootIsDecorated() && row.parent() == view.rootIndex())) {
    return {};
  }
  QRect expander = view.visualRect(row);
  if (view.isRightToLeft()) {
    expander.setLeft(expander.right() + 1);
    expander.setWidth(view.indentation());
  } else {
    expander.setRight(expander.left() - 1);
    expander.setLeft(expander.right() - view.indentation() + 1);
  }
  if (!expander.contains(position)) {
    return {};
  }
  return row;
}

QRect TreeExpander::Place(const QTreeView& view, const QRect& branches) {
  QRect place = branches;
  place.setWidth(view.indentation());
  if (!view.isRightToLeft()) {
    place.moveRight(branches.right());
  }
  return place;
}

void TreeExpander::DrawWaitingMark(QPainter* painter, const QRect& expander, const QColor& color, int frame) {
  const int size = qBound(8, qMin(expander.width(), expander.height()) - 4, 12);
  QRectF circle(0, 0, size, size);
  circle.moveCenter(QRectF(expander).center());
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  QColor faint = color;
  faint.setAlphaF(0.3);
  painter->setPen(QPen(faint, 2));
  painter->drawEllipse(circle);
  painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap));
  painter->drawArc(circle, -frame * 360 * 16 / kFramesPerTurn, 100 * 16);
  painter->restore();
}

}  // namespace MarUIControl
