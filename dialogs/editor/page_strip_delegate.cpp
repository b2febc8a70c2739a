#include "page_strip_delegate.h"

#include <QPainter>

#include "TarnUIDataController/skin_color.h"
#include "page_strip_model.h"
#include "split_layout.h"

namespace TarnPlanView {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kPadding = 6;
const QSize kPicture(56, 32);

QColor Background(QStyle::State state) {
  if (state & QStyle::State_Selected) {
    return SkinColor("selection");
  }
  return SkinColor(state & QStyle::State_MouseOver ? "hover" : "raised");
}

}  // namespace

QSize CPageStripDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return QSize(kPicture.width() + 3 * kPadding, kPicture.height() + option.fontMetrics.height() + 3 * kPadding);
}

void CPageStripDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto ink = [chosen = bool(option.state & QStyle::State_Selected)](const char* usual) {
    return SkinColor(chosen ? "selection_text" : usual);
  };
  const QRect box = option.rect.adjusted(2, 2, -2, -2);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(Background(option.state));
  painter->setPen(SkinColor("border"));
  if (option.state & QStyle::State_HasFocus) {
    painter->setPen(QPen(ink("focus"), 2));
  }
  painter->drawRoundedRect(box, 4, 4);
  painter->setRenderHint(QPainter::Antialiasing, false);
  QRect picture(QPoint(), kPicture);
  picture.moveCenter(QPoint(box.center().x(), box.top() + kPadding + kPicture.height() / 2));
  const auto* model = qobject_cast<const CPageStripModel*>(index.model());
  PaintSplit(painter, picture, index.data(CPageStripModel::SplitRole).toInt(), ink("text"),
             [&](int window_no) { return model && model->IsFilled(index, window_no); });
  const QRect words = box.adjusted(kPadding, picture.bottom() - box.top() + 2, -kPadding, -2);
  painter->setPen(ink("text"));
  painter->drawText(words, Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
  painter->setPen(ink("text_muted"));
  const int room = words.width() - option.fontMetrics.horizontalAdvance(index.data().toString()) - kPadding;
  painter->drawText(
      words, Qt::AlignRight | Qt::AlignVCenter,
      option.fontMetrics.elidedText(index.data(CPageStripModel::DwellRole).toString(), Qt::ElideRight, room));
  painter->restore();
}

}  // namespace TarnPlanView
