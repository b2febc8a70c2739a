#include "MarUIControl/time_edit.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>

#include "MarUIControl/field_keys.h"

namespace MarUIControl {

namespace {

constexpr int kSectionWidth = 3;  // "HH:"

bool IsLeftMouse(const QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
      return static_cast<const QMouseEvent*>(event)->button() == Qt::LeftButton;
    case QEvent::MouseMove:
      return static_cast<const QMouseEvent*>(event)->buttons() & Qt::LeftButton;
    default:
      return false;
  }
}

bool IsModifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
      return true;
    default:
      return false;
  }
}

bool BringsText(const QEvent* event) {
  const bool is_middle = event->type() == QEvent::MouseButtonRelease &&
                         static_cast<const QMouseEvent*>(event)->button() == Qt::MiddleButton;
  return is_middle || event->type() == QEvent::DragEnter || event->type() == QEvent::Drop;
}

}  // namespace

CTimeEdit::CTimeEdit(QWidget* parent) : QTimeEdit(QTime(0, 0), parent) {
  setDisplayFormat(QStringLiteral("HH:mm:ss"));
  setButtonSymbols(QAbstractSpinBox::NoButtons);
  setAlignment(Qt::AlignCenter);
  setWrapping(true);
  setFocusPolicy(Qt::StrongFocus);
  lineEdit()->installEventFilter(this);
}

bool CTimeEdit::event(QEvent* event) {
  if (IsClearLineKey(event)) {
    event->ignore();  // a shortcut of the window
    return true;
  }
  if (event->type() == QEvent::FocusOut) {
    state_ = TypedTime::State::Chosen;
  }
  return QTimeEdit::event(event);
}

// A click only chooses a section: a cursor between two digits has no room for a third one. Text comes in as a whole
// time, or not at all.
bool CTimeEdit::eventFilter(QObject* watched, QEvent* event) {
  if (watched != lineEdit() || !(IsLeftMouse(event) || BringsText(event))) {
    return QTimeEdit::eventFilter(watched, event);
  }
  const bool is_press = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (is_press) {
    const int position = lineEdit()->cursorPositionAt(static_cast<QMouseEvent*>(event)->pos());
    SelectSection(position / kSectionWidth);
  }
  return true;
}

void CTimeEdit::keyPressEvent(QKeyEvent* event) {
  if (IsModifier(event->key())) {
    event->ignore();  // the digit that comes with it may be the second one of a section
  } else if (event->matches(QKeySequence::Paste)) {
    Paste();
  } else if (event->matches(QKeySequence::Copy) || event->matches(QKeySequence::Cut)) {
    Copy();
  } else if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete) {
    ClearSections();
  } else if (event->text() == QLatin1String(":") || event->text() == QLatin1String(".")) {
    TypeSeparator();
  } else if (!GoBetweenSections(event->key()) && !TypeDigits(event)) {
    state_ = TypedTime::State::Chosen;
    QTimeEdit::keyPressEvent(event);
  }
}

// The base moves a cursor between the digits.
bool CTimeEdit::GoBetweenSections(int key) {
  switch (key) {
    case Qt::Key_Left:
      SelectSection(currentSectionIndex() - 1);
      return true;
    case Qt::Key_Right:
      SelectSection(currentSectionIndex() + 1);
      return true;
    case Qt::Key_Home:
      SelectSection(0);
      return true;
    case Qt::Key_End:
      SelectSection(TypedTime::kSections - 1);
      return true;
    default:
      return false;
  }
}

// After two digits the next section has its turn already.
void CTimeEdit::TypeSeparator() {
  int section = currentSectionIndex();
  if (state_ != TypedTime::State::HandedOn) {
    ++section;
  }
  SelectSection(section);
}

// Also letters, which are no part of a time, but not what belongs to a shortcut.
bool CTimeEdit::TypeDigits(QKeyEvent* event) {
  const QString text = event->text();
  const auto modifiers = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
  if (text.isEmpty() || !text.at(0).isPrint() || modifiers != Qt::NoModifier) {
    return false;
  }
  if (text.at(0).isDigit() && !isReadOnly()) {
    TypeDigit(text.at(0).digitValue());
  }
  return true;
}

void CTimeEdit::TypeDigit(int digit) {
  if (IsWholeSelected()) {
    SelectSection(0);
  }
  if (time() != typed_) {
    state_ = TypedTime::State::Chosen;  // set from elsewhere since
  }
  const TypedTime typed = WithDigit({time(), currentSectionIndex(), state_}, digit);
  setTime(typed.time);
  SelectSection(typed.section);
  state_ = typed.state;
  typed_ = time();
}

void CTimeEdit::SelectSection(int section) {
  state_ = TypedTime::State::Chosen;
  setSelectedSection(sectionAt(qBound(0, section, TypedTime::kSections - 1)));
}

void CTimeEdit::ClearSections() {
  if (IsWholeSelected()) {
    setTime(QTime(0, 0));
    SelectSection(0);
    return;
  }
  const int section = currentSectionIndex();
  setTime(WithoutSection(time(), section));
  SelectSection(section);
}

bool CTimeEdit::IsWholeSelected() const {
  return lineEdit()->selectedText().size() == lineEdit()->text().size();
}

void CTimeEdit::Paste() {
  const std::optional<QTime> pasted = TimeFromText(QGuiApplication::clipboard()->text());
  if (pasted && !isReadOnly()) {
    setTime(*pasted);
    SelectSection(0);
  }
}

void CTimeEdit::Copy() const {
  QGuiApplication::clipboard()->setText(text());
}

void CTimeEdit::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(accessibleName());
  menu->addAction(QLineEdit::tr("&Copy"), this, &CTimeEdit::Copy)->setShortcut(QKeySequence::Copy);
  QAction* paste = menu->addAction(QLineEdit::tr("&Paste"), this, &CTimeEdit::Paste);
  paste->setShortcut(QKeySequence::Paste);
  paste->setEnabled(TimeFromText(QGuiApplication::clipboard()->text()).has_value());
  menu->popup(event->globalPos());
  event->accept();
}

// A wheel that only passes over must not change a time.
void CTimeEdit::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    state_ = TypedTime::State::Chosen;
    QTimeEdit::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace MarUIControl
