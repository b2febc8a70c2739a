#include "split_layout.h"

#include <QPainter>

#include "plan_draft.h"

namespace TarnPlanView {

QRect WindowPlace(const QRect& room, int split_type, int window_no, int gap) {
  const int side = SideOfSplit(split_type);
  const int row = (window_no - 1) / side, column = (window_no - 1) % side;
  // From edge to edge, so that rounding leaves no strip at the end.
  const auto edge = [side, gap](int length, int index) { return (length + gap) * index / side; };
  const int left = edge(room.width(), column), top = edge(room.height(), row);
  return QRect(room.left() + left, room.top() + top, edge(room.width(), column + 1) - gap - left,
               edge(room.height(), row + 1) - gap - top);
}

int WindowAt(const QRect& room, int split_type, const QPoint& point) {
  for (int window_no = 1; window_no <= WindowsOfSplit(split_type); ++window_no) {
    if (WindowPlace(room, split_type, window_no, 0).contains(point)) {
      return window_no;
    }
  }
  return 0;
}

void PaintSplit(QPainter* painter, const QRect& room, int split_type, const QColor& color,
                const std::function<bool(int window_no)>& is_filled) {
  painter->save();
  painter->setPen(color);
  QColor inside = color;
  inside.setAlphaF(0.55);
  for (int window_no = 1; window_no <= WindowsOfSplit(split_type); ++window_no) {
    const QRect place = WindowPlace(room, split_type, window_no, 1);
    painter->setBrush(is_filled && is_filled(window_no) ? QBrush(inside) : QBrush(Qt::NoBrush));
    painter->drawRect(place.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}

}  // namespace TarnPlanView
