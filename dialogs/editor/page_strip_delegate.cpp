#include "page_strip_delegate.h"

#include <QPainter>

#include "TarnUIDataController/skin_loader.h"
#include "page_strip_model.h"
#include "split_layout.h"

namespace TarnPlanView {

namespace {

constexpr int kPadding = 6;
const QSize kPicture(56, 32);

QColor Color(const char* name) {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QString::fromLatin1(name));
}

}  // namespace

QSize CPageStripDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return QSize(kPicture.width() + 3 * kPadding, kPicture.height() + option.fontMetrics.height() + 3 * kPadding);
}

void CPageStripDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const bool chosen = option.state & QStyle::State_Selected;
  const QRect box = option.rect.adjusted(2, 2, -2, -2);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(Color(chosen ? "selection" : (option.state & QStyle::State_MouseOver) ? "hover" : "raised"));
  painter->setPen(option.state & QStyle::State_HasFocus ? QPen(Color(chosen ? "selection_text" : "focus"), 2)
                                                        : QPen(Color("border")));
  painter->drawRoundedRect(box, 4, 4);
  painter->setRenderHint(QPainter::Antialiasing, false);
  const QColor ink = Color(chosen ? "selection_text" : "text");
  QRect picture(QPoint(), kPicture);
  picture.moveCenter(QPoint(box.center().x(), box.top() + kPadding + kPicture.height() / 2));
  const auto* model = qobject_cast<const CPageStripModel*>(index.model());
  PaintSplit(painter, picture, index.data(CPageStripModel::SplitRole).toInt(), ink,
             [&](int window_no) { return model && model->IsFilled(index, window_no); });
  const QRect words = box.adjusted(kPadding, picture.bottom() - box.top() + 2, -kPadding, -2);
  painter->setPen(ink);
  painter->drawText(words, Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
  painter->setPen(Color(chosen ? "selection_text" : "text_muted"));
  const int room = words.width() - option.fontMetrics.horizontalAdvance(index.data().toString()) - kPadding;
  painter->drawText(
      words, Qt::AlignRight | Qt::AlignVCenter,
      option.fontMetrics.elidedText(index.data(CPageStripModel::DwellRole).toString(), Qt::ElideRight, room));
  painter->restore();
}

}  // namespace TarnPlanView
