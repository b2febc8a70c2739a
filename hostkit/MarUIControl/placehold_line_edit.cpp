#include "MarUIControl/placehold_line_edit.h"

#include <QStyle>
#include <QStyleOptionFrame>

namespace MarUIControl {

CPlaceholdLineEdit::CPlaceholdLineEdit(QWidget* parent) : CLineEdit(parent) {}

CPlaceholdLineEdit::~CPlaceholdLineEdit() = default;

void CPlaceholdLineEdit::setPlaceholderText(const QString& text) {
  placeholder_ = text;
  RenewPlaceholder();
}

QString CPlaceholdLineEdit::placeholderText() const {
  return placeholder_;
}

void CPlaceholdLineEdit::resizeEvent(QResizeEvent* event) {
  CLineEdit::resizeEvent(event);
  RenewPlaceholder();
}

void CPlaceholdLineEdit::RenewPlaceholder() {
  QStyleOptionFrame option;
  initStyleOption(&option);
  const QRect room = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
  const QMargins margins = textMargins();
  constexpr int kCursorRoom = 6;
  const int width = room.width() - margins.left() - margins.right() - kCursorRoom;
  QLineEdit::setPlaceholderText(fontMetrics().elidedText(placeholder_, Qt::ElideRight, width));
}

}  // namespace MarUIControl
