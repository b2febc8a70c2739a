#include "MarUIControl/line_edit.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QValidator>

#include "MarUIControl/field_keys.h"
#include "MarUIControl/plain_tool_tip.h"
#include "qt/event_places.h"

namespace MarUIControl {

namespace {

// Several lines become one with spaces between them; line breaks around a text, as tables copy them, just go.
QString WithoutLineBreaks(const QString& text) {
  static const QRegularExpression around(QStringLiteral("^[\\n\\r\\x{2028}\\x{2029}]+|[\\n\\r\\x{2028}\\x{2029}]+$"));
  static const QRegularExpression within(QStringLiteral("[\\n\\r\\t\\x{2028}\\x{2029}]+"));
  static const QRegularExpression controls(QStringLiteral("[\\x{0}-\\x{1f}\\x{7f}-\\x{9f}]"));
  return QString(text).remove(around).replace(within, QStringLiteral(" ")).remove(controls);
}

// No half of a character beyond the basic plane.
QString Left(const QString& text, int length) {
  if (length > 0 && length < text.size() && text.at(length - 1).isHighSurrogate()) {
    --length;
  }
  return text.left(qMax(length, 0));
}

// The base gives its actions no names; their texts begin with its own translations.
QAction* PasteAction(const QMenu* menu) {
  const QList<QAction*> actions = menu->actions();
  for (QAction* action : actions) {
    if (action->text().startsWith(QLineEdit::tr("&Paste"))) {
      return action;
    }
  }
  return nullptr;
}

}  // namespace

CLineEdit::CLineEdit(QWidget* parent) : QLineEdit(parent) {}

CLineEdit::~CLineEdit() = default;

void CLineEdit::setMaxLineEditLength(int length) {
  setMaxLength(length);
}

void CLineEdit::setToolTip(const QString& text) {
  QLineEdit::setToolTip(PlainToolTip(text));
}

bool CLineEdit::event(QEvent* event) {
  if (IsClearLineKey(event)) {
    event->ignore();
    return true;
  }
  if (IsDeleteLetterKey(event)) {
    event->accept();  // the field's, before a shortcut of the window takes it
    return true;
  }
  return QLineEdit::event(event);
}

void CLineEdit::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) {
    PasteAllowed(QGuiApplication::clipboard()->text());
    event->accept();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void CLineEdit::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* menu = createStandardContextMenu();
  if (!menu) {
    return;
  }
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(accessibleName());
  if (QAction* paste = PasteAction(menu)) {
    paste->setObjectName(QStringLiteral("edit-paste"));
    paste->disconnect(this);
    connect(paste, &QAction::triggered, this, [this] { PasteAllowed(QGuiApplication::clipboard()->text()); });
  }
  menu->popup(event->globalPos());
  event->accept();
}

void CLineEdit::mouseReleaseEvent(QMouseEvent* event) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (event->button() != Qt::MiddleButton || !clipboard->supportsSelection()) {
    QLineEdit::mouseReleaseEvent(event);
    return;
  }
  deselect();
  PasteAllowed(clipboard->text(QClipboard::Selection));
  event->accept();
}

// The base inserts what the drop carries; text from elsewhere is made acceptable first.
void CLineEdit::dropEvent(QDropEvent* event) {
  if (event->source() == this || !event->mimeData()->hasText()) {
    QLineEdit::dropEvent(event);
    return;
  }
  setCursorPosition(cursorPositionAt(TarnQt::PlaceOf(*event)));
  PasteAllowed(event->mimeData()->text());
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void CLineEdit::PasteAllowed(const QString& pasted) {
  if (isReadOnly() || pasted.isEmpty()) {
    return;
  }
  const QString text = Allowed(pasted);
  if (text.isEmpty()) {
    return;
  }
  SeparateUndo();
  insert(text);
  SeparateUndo();
}

// A text that is in order as a whole goes in as it is; otherwise the validator is asked about each character.
QString CLineEdit::Allowed(const QString& pasted) const {
  const int room = maxLength() - text().size() + selectedText().size();
  const QString line = WithoutLineBreaks(pasted);
  if (!validator() || !IsRefused(TextWith(Left(line, room)))) {
    return Left(line, room);
  }
  QString allowed;
  for (int at = 0; at < line.size();) {
    const int units = line.at(at).isHighSurrogate() && at + 1 < line.size() ? 2 : 1;
    const QString character = line.mid(at, units);
    at += units;
    if (!IsRefused(character)) {
      allowed += character;
    }
  }
  return Left(allowed, room);
}

QString CLineEdit::TextWith(const QString& inserted) const {
  QString whole = text();
  if (hasSelectedText()) {
    return whole.replace(selectionStart(), selectedText().size(), inserted);
  }
  return whole.insert(cursorPosition(), inserted);
}

bool CLineEdit::IsRefused(QString text) const {
  int position = text.size();
  return validator() && validator()->validate(text, position) == QValidator::Invalid;
}

// A step of the cursor ends what one undo takes back; replacing a selection is a step of its own already.
void CLineEdit::SeparateUndo() {
  const int at = cursorPosition();
  if (hasSelectedText() || text().isEmpty()) {
    return;
  }
  setCursorPosition(at > 0 ? at - 1 : at + 1);
  setCursorPosition(at);
}

}  // namespace MarUIControl
