#include "row_marks.h"

#include <QPainter>
#include <QPainterPath>
#include <QVariant>
#include <array>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_item_role.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using view_plugin_protocol::PlanBasicInfo;

namespace {

constexpr qreal kStroke = 1.2;

void Prepare(QPainter* painter, const QColor& color) {
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(color, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->setBrush(Qt::NoBrush);
}

QRectF Circle(const QRect& rect) {
  return QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
}

void FillTriangle(QPainter* painter, const QColor& color, const std::array<QPointF, 3>& corners) {
  painter->setPen(Qt::NoPen);
  painter->setBrush(color);
  painter->drawPolygon(corners.data(), static_cast<int>(corners.size()));
}

}  // namespace

// Looks at the row's record in place: rows are painted by the dozen.
RowMarks RowMarks::Of(const QModelIndex& row, const QString& cycling_group) {
  RowMarks marks;
  if (!cycling_group.isEmpty() && row.data(IsGroupRole).toBool()) {
    marks.cycling = row.data(GroupIndexCodeRole).toString() == cycling_group;
    return marks;
  }
  const QVariant record = row.data(CurrentRecordRole);
  if (record.userType() == qMetaTypeId<PlanBasicInfo>()) {
    const bool timed_play = CViewConfigManager::Instance().IsSupportTimedPlay();
    marks.sign = SignOf(*static_cast<const PlanBasicInfo*>(record.constData()), timed_play);
    marks.playing = row.data(PlayingRole).toBool();
  }
  return marks;
}

void PaintPlayingMark(QPainter* painter, const QRect& rect, const QColor& color) {
  painter->save();
  Prepare(painter, color);
  painter->drawEllipse(Circle(rect));
  const QPointF center = Circle(rect).center();
  FillTriangle(painter, color, {center + QPointF(-2, -3.5), center + QPointF(4, 0), center + QPointF(-2, 3.5)});
  painter->restore();
}

void PaintCyclingMark(QPainter* painter, const QRect& rect, const QColor& color) {
  painter->save();
  Prepare(painter, color);
  const QRectF circle = Circle(rect);
  constexpr int kDegree = 16;  // as the painter counts
  painter->drawArc(circle, 50 * kDegree, 290 * kDegree);
  const QPointF center = circle.center();
  const QPointF end(circle.right(), center.y() - 1);
  FillTriangle(painter, color, {end + QPointF(-4, 0.5), end + QPointF(1.5, 1), end + QPointF(0.5, -4.5)});
  FillTriangle(painter, color, {center + QPointF(-1.5, -2.5), center + QPointF(2.5, 0), center + QPointF(-1.5, 2.5)});
  painter->restore();
}

void PaintClockMark(QPainter* painter, const QRect& rect, const QColor& color) {
  painter->save();
  Prepare(painter, color);
  painter->drawEllipse(Circle(rect));
  const QPointF center = Circle(rect).center();
  const QPointF hands[] = {center + QPointF(0, -4), center, center + QPointF(3, 1.8)};
  painter->drawPolyline(hands, 3);
  painter->restore();
}

void PaintTourMark(QPainter* painter, const QRect& rect, const QColor& color) {
  painter->save();
  Prepare(painter, color);
  const QRectF room = Circle(rect).adjusted(0, 1, 0, -1);
  const QRectF front(room.left(), room.top() + 3.5, room.width() - 3.5, room.height() - 3.5);
  painter->drawRoundedRect(front, 1, 1);
  QPainterPath behind(front.topLeft() + QPointF(3.5, -3.5));
  behind.lineTo(room.topRight());
  behind.lineTo(room.right(), front.bottom() - 3.5);
  painter->drawPath(behind);
  painter->restore();
}

}  // namespace TarnPlanView
