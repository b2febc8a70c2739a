#include "history/history_item_delegate.h"

#include <QApplication>
#include <QPainter>

#include "TarnUIDataController/skin_color.h"
#include "history/play_history.h"

namespace TarnClient {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kMargin = 10, kPadding = 6;

}  // namespace

void CHistoryItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  QStyleOptionViewItem row = option;
  initStyleOption(&row, index);
  row.text.clear();
  row.state.setFlag(QStyle::State_Selected, row.state & QStyle::State_Selected && row.state & QStyle::State_Enabled);
  const QStyle* style = row.widget ? row.widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

  const bool selected = row.state & QStyle::State_Selected;
  const bool enabled = row.state & QStyle::State_Enabled;
  const QFontMetrics& metrics = option.fontMetrics;
  const QRect inside = option.rect.adjusted(kMargin, kPadding, -kMargin, -kPadding);
  const QString time = index.data(CPlayHistory::TimeRole).toString();
  const int time_width = metrics.horizontalAdvance(time) + kMargin;
  const auto line = [&](const QString& text, int top, int width, const char* color) {
    painter->setPen(SkinColor(enabled ? color : "text_disabled"));
    if (selected) {
      painter->setPen(SkinColor("selection_text"));
    }
    painter->drawText(QRect(inside.left(), top, width, metrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                      metrics.elidedText(text, Qt::ElideMiddle, width));
  };
  line(index.data().toString(), inside.top(), inside.width(), "text");
  line(index.data(CPlayHistory::PlaceRole).toString(), inside.top() + metrics.height() + 2, inside.width() - time_width,
       "text_muted");
  painter->drawText(inside, Qt::AlignRight | Qt::AlignBottom, time);
}

QSize CHistoryItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return QSize(200, 2 * option.fontMetrics.height() + 2 + 2 * kPadding);
}

}  // namespace TarnClient
