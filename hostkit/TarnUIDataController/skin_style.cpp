#include "TarnUIDataController/skin_style.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>
#include <QTreeView>

#include "TarnUIDataController/tool_tip_fitter.h"

namespace tarn_ui_data_controller {

namespace {

constexpr qreal kDisabledOpacity = 0.35;

QPixmap Faint(const QPixmap& pixmap) {
  QPixmap faint(pixmap.size());
  faint.setDevicePixelRatio(pixmap.devicePixelRatio());
  faint.fill(Qt::transparent);
  QPainter painter(&faint);
  painter.setOpacity(kDisabledOpacity);
  painter.drawPixmap(0, 0, pixmap);
  return faint;
}

// A view does not say it of the part before the row, where the arrow stands.
bool IsOfSelectedRow(const QStyleOption& branch, const QWidget* widget) {
  const auto* view = qobject_cast<const QTreeView*>(widget);
  if (!view || !view->selectionModel() || !(branch.state & QStyle::State_Children)) {
    return false;
  }
  return view->selectionModel()->isSelected(view->indexAt(branch.rect.center()));
}

// Lines, as those of the icons; the style's own arrow is half transparent.
void DrawExpander(QPainter* painter, const QStyleOption& branch, const QColor& color) {
  const QPointF center = QRectF(branch.rect).center();
  QPolygonF arrow({{-2.5, -4.5}, {2, 0}, {-2.5, 4.5}});
  if (branch.state & QStyle::State_Open) {
    arrow = QPolygonF({{-4.5, -2.5}, {0, 2}, {4.5, -2.5}});
  } else if (branch.direction == Qt::RightToLeft) {
    arrow = QPolygonF({{2.5, -4.5}, {-2, 0}, {2.5, 4.5}});
  }
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->drawPolyline(arrow.translated(center));
  painter->restore();
}

bool IsRowFocus(const QStyleOption& option, const QWidget* widget) {
  return (option.state & QStyle::State_Item) && qobject_cast<const QAbstractItemView*>(widget);
}

void DrawRowFocus(QPainter* painter, const QStyleOption& row) {
  painter->save();
  painter->setPen(row.state & QStyle::State_Selected ? row.palette.color(QPalette::HighlightedText)
                                                     : row.palette.color(QPalette::Link));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(row.rect.adjusted(0, 1, -1, -2));
  painter->restore();
}

}  // namespace

SkinStyle::SkinStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

// The base style's grey differs from a grey icon on a light ground alone.
QPixmap SkinStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap& pixmap, const QStyleOption* option) const {
  if (mode == QIcon::Disabled) {
    return Faint(pixmap);
  }
  return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
}

void SkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element == PE_FrameFocusRect && IsRowFocus(*option, widget)) {
    DrawRowFocus(painter, *option);
  } else if (element != PE_IndicatorBranch) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  } else if (option->state & State_Children) {
    const bool selected = IsOfSelectedRow(*option, widget);
    DrawExpander(painter, *option, option->palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
  }
}

void SkinStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (widget->inherits("QTipLabel")) {
    ToolTipFitter::Install(widget);
  }
}

}  // namespace tarn_ui_data_controller
