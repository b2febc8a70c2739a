#pragma once

#include <QColor>
#include <QModelIndex>
#include <QRect>

#include "plan_rules/plan_sign.h"

class QPainter;

namespace TarnPlanView {

/// What a row of a plan shows beside its name.
struct RowMarks {
  bool playing = false;
  view_plugin_protocol::PlanSign sign;

  bool Any() const { return playing || !sign.IsEmpty(); }
  static RowMarks Of(const QModelIndex& row);
};

/// The marks, each in a square: a triangle in a circle, the hands of a clock, two pages one over the other.
void PaintPlayingMark(QPainter* painter, const QRect& rect, const QColor& color);
void PaintClockMark(QPainter* painter, const QRect& rect, const QColor& color);
void PaintTourMark(QPainter* painter, const QRect& rect, const QColor& color);

}  // namespace TarnPlanView
