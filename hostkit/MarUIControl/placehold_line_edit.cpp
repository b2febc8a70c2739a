#include "MarUIControl/placehold_line_edit.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>

#include "MarUIControl/plain_tool_tip.h"

namespace MarUIControl {

CPlaceholdLineEdit::CPlaceholdLineEdit(QWidget* parent) : CLineEdit(parent) {}

CPlaceholdLineEdit::~CPlaceholdLineEdit() = default;

// The base draws the ellipsis.
void CPlaceholdLineEdit::setPlaceholderText(const QString& text) {
  CLineEdit::setPlaceholderText(text);
}

QString CPlaceholdLineEdit::placeholderText() const {
  return CLineEdit::placeholderText();
}

bool CPlaceholdLineEdit::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !text().isEmpty() || !toolTip().isEmpty()) {
    return CLineEdit::event(event);
  }
  QStyleOptionFrame option;
  initStyleOption(&option);
  const int room = style()->subElementRect(QStyle::SE_LineEditContents, &option, this).width();
  if (fontMetrics().horizontalAdvance(placeholderText()) <= room) {
    return CLineEdit::event(event);
  }
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainToolTip(placeholderText()), this);
  return true;
}

}  // namespace MarUIControl
