#pragma once

#include <QColor>
#include <QModelIndex>
#include <QRect>

#include "plan_rules/plan_sign.h"

class QPainter;

namespace TarnPlanView {

/// What a row shows beside its name.
struct RowMarks {
  bool playing = false;  // the plan
  bool cycling = false;  // the group: its plans play in turn
  view_plugin_protocol::PlanSign sign;

  bool IsOn() const { return playing || cycling; }
  bool Any() const { return IsOn() || !sign.IsEmpty(); }
  static RowMarks Of(const QModelIndex& row, const QString& cycling_group = {});
};

/// The marks, each in a square: a triangle in a circle, one in an arrow that goes round, the hands of a clock, two
/// pages one over the other.
void PaintPlayingMark(QPainter* painter, const QRect& rect, const QColor& color);
void PaintCyclingMark(QPainter* painter, const QRect& rect, const QColor& color);
void PaintClockMark(QPainter* painter, const QRect& rect, const QColor& color);
void PaintTourMark(QPainter* painter, const QRect& rect, const QColor& color);

}  // namespace TarnPlanView
