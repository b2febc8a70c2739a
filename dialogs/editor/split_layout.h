#pragma once

#include <QColor>
#include <QRect>
#include <functional>

class QPainter;

namespace TarnPlanView {

/// Where window `window_no` (from 1) stands in `room`, with `gap` pixels between windows.
QRect WindowPlace(const QRect& room, int split_type, int window_no, int gap);
/// The window at `point`; 0 for none.
int WindowAt(const QRect& room, int split_type, const QPoint& point);

/// Little picture of a page: its windows as boxes, those that hold something filled. Thread: GUI.
void PaintSplit(QPainter* painter, const QRect& room, int split_type, const QColor& color,
                const std::function<bool(int window_no)>& is_filled);

}  // namespace TarnPlanView
