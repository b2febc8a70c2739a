#include "search_plan_item_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include "TarnUIDataController/skin_loader.h"
#include "hit_line.h"
#include "plan_item_role.h"
#include "plan_rules/plan_sign.h"
#include "row_marks.h"
#include "search_plan_list_view.h"

namespace TarnPlanView {

namespace {

constexpr int kIconSize = 20;
constexpr int kMargin = 10;
constexpr int kGap = 8;
constexpr int kPadding = 7;
constexpr int kMarkSize = 14;
constexpr int kMarkGap = 6;

QColor SkinColor(const char* name) {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QString::fromLatin1(name));
}

// Every place of the searched text, underlined and bold: seen without colours too.
QVector<QTextLayout::FormatRange> MarksIn(const QString& text, const QString& searched, const QColor& color,
                                          int from = 0) {
  QVector<QTextLayout::FormatRange> marks;
  QTextCharFormat format;
  format.setForeground(color);
  format.setFontWeight(QFont::Bold);
  format.setFontUnderline(true);
  for (const int at : PlacesOf(searched, text, from)) {
    marks.append({at, int(searched.size()), format});
  }
  return marks;
}

// Marked text is wider than measured.
QString WithRoomForMark(const QString& text, const QString& searched, const QFont& font, Qt::TextElideMode mode,
                        int width) {
  QFont bold = font;
  bold.setBold(true);
  const QFontMetrics metrics(font);
  const int more = QFontMetrics(bold).horizontalAdvance(searched) - metrics.horizontalAdvance(searched);
  return metrics.elidedText(text, mode, width - qMax(0, more));
}

void DrawLine(QPainter* painter, const QRect& rect, const QString& text, const QFont& font, const QColor& color,
              const QVector<QTextLayout::FormatRange>& marks) {
  QTextLayout layout(text, font);
  QTextOption option(Qt::AlignLeft);
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.setFormats(marks);
  layout.beginLayout();
  layout.createLine().setLineWidth(1 << 20);
  layout.endLayout();
  painter->setPen(color);
  layout.draw(painter, rect.topLeft());
}

QRect TextRect(const QStyleOptionViewItem& option) {
  return option.rect.adjusted(kMargin + kIconSize + kGap, kPadding, -kMargin, -kPadding);
}

struct Colors {
  QColor main, muted, mark;
  QIcon::Mode icon;
};

Colors ColorsOf(bool selected) {
  if (selected) {
    const QColor all = SkinColor("selection_text");
    return {all, all, all, QIcon::Selected};
  }
  return {SkinColor("text"), SkinColor("text_muted"), SkinColor("accent_on_surface"), QIcon::Normal};
}

// Where the hit stands, and what it shows.
void DrawBelow(QPainter* painter, QRect rect, const QModelIndex& index, const QFont& font, const Colors& colors) {
  const QFontMetrics metrics(font);
  const auto width_of = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
  const HitLine line = FittedLine(index.data(kSearchPathRole).toStringList(), index.data(kSearchShownRole).toString(),
                                  rect.width(), width_of);
  if (line.shown.isEmpty()) {
    DrawLine(painter, rect, metrics.elidedText(line.place, Qt::ElideMiddle, rect.width()), font, colors.muted, {});
    return;
  }
  const int for_place = rect.width() - qMin(width_of(HitLineGap() + line.shown), rect.width() / 2);
  const QString place = metrics.elidedText(line.place, Qt::ElideMiddle, for_place) + HitLineGap();
  DrawLine(painter, rect, place, font, colors.muted, {});
  rect.setLeft(rect.left() + width_of(place));
  const QString searched = index.data(SearchTextRole).toString();
  const QString shown = WithRoomForMark(line.shown, searched, font, Qt::ElideRight, rect.width());
  const int camera_at = index.data(kSearchCameraAtRole).toInt();
  DrawLine(painter, rect, shown, font, colors.muted, MarksIn(shown, searched, colors.mark, camera_at));
}

// At the end of the name's line; gives how much of it they take.
int DrawSigns(QPainter* painter, const QRect& line, const RowMarks& marks, const QColor& color) {
  QRect mark(line.right() - kMarkSize + 1, line.center().y() - kMarkSize / 2, kMarkSize, kMarkSize);
  int taken = 0;
  const auto draw = [&](bool shown, void (*paint)(QPainter*, const QRect&, const QColor&)) {
    if (shown) {
      paint(painter, mark, color);
      mark.translate(-kMarkSize - kMarkGap, 0);
      taken += kMarkSize + kMarkGap;
    }
  };
  draw(marks.sign.IsTour(), &PaintTourMark);
  draw(marks.sign.timed, &PaintClockMark);
  return taken;
}

}  // namespace

void CSearchPlanItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  QStyleOptionViewItem row = option;
  initStyleOption(&row, index);
  const QIcon icon = row.icon;
  row.text.clear();
  row.icon = QIcon();
  row.widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

  const Colors colors = ColorsOf(row.state & QStyle::State_Selected);
  const QRect text = TextRect(option);
  const QRect icon_rect(option.rect.left() + kMargin, option.rect.center().y() - kIconSize / 2, kIconSize, kIconSize);
  icon.paint(painter, icon_rect, Qt::AlignCenter, colors.icon);

  const QFontMetrics metrics(option.font);
  const QString searched = index.data(SearchTextRole).toString();
  painter->save();
  painter->setClipRect(text);
  const QRect first_line(text.topLeft(), QSize(text.width(), metrics.height()));
  const int for_name = text.width() - DrawSigns(painter, first_line, RowMarks::Of(index), colors.muted);
  const QString name = WithRoomForMark(index.data().toString(), searched, option.font, Qt::ElideRight, for_name);
  DrawLine(painter, text, name, option.font, colors.main, MarksIn(name, searched, colors.mark));
  const QRect below(text.left(), text.top() + metrics.height() + 2, text.width(), metrics.height());
  DrawBelow(painter, below, index, option.font, colors);
  painter->restore();
}

QSize CSearchPlanItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  Q_UNUSED(index)
  return QSize(120, 2 * QFontMetrics(option.font).height() + 2 + 2 * kPadding);
}

bool CSearchPlanItemDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  const HitLine line{PlaceText(index.data(kSearchPathRole).toStringList()), index.data(kSearchShownRole).toString()};
  QStringList lines{index.data().toString(), WholeLine(line), TextOf(RowMarks::Of(index).sign)};
  lines.removeAll(QString());
  const QString whole = lines.join(QLatin1Char('\n'));
  QToolTip::showText(event->globalPos(), Qt::mightBeRichText(whole) ? Qt::convertFromPlainText(whole) : whole, view);
  return true;
}

}  // namespace TarnPlanView
