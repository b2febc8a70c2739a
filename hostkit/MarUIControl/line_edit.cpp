#include "MarUIControl/line_edit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedPointer>
#include <QValidator>

namespace MarUIControl {

CLineEdit::CLineEdit(QWidget* parent) : QLineEdit(parent) {}

CLineEdit::~CLineEdit() = default;

void CLineEdit::setMaxLineEditLength(int length) {
  setMaxLength(length);
}

void CLineEdit::setToolTip(const QString& text) {
  QLineEdit::setToolTip(text.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()));
}

void CLineEdit::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste) && !isReadOnly()) {
    PasteAllowed();
    event->accept();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void CLineEdit::contextMenuEvent(QContextMenuEvent* event) {
  QLineEdit::contextMenuEvent(event);
}

void CLineEdit::PasteAllowed() {
  insert(QApplication::clipboard()->text());
}

}  // namespace MarUIControl
