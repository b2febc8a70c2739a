#include "view_name_edit.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPalette>
#include <QTimerEvent>
#include <QToolTip>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "keep_on_screen.h"
#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "qt/pattern_validator.h"
#include "typing_hint.h"
#include "ui_view_name_edit.h"

namespace TarnPlanView {

namespace {

enum Mode { AddGroup = 0, RenameGroup = 1, RenameCycle = 2 };

constexpr int kHintDelay = 500;  // ms
constexpr int kHintRise = 25;    // how far above the field's lower edge the hint begins

// The pop-up is white in every skin, so what stands on it must not take the colours of a dark one.
constexpr char kOnWhite[] =
    "TarnPlanView--CViewNameEdit { background: #ffffff; border: 1px solid #7d8692; }"
    "MarUIControl--CFrame { border: 0; }"
    "QLabel { color: #1e2329; background: transparent; }"
    "QLineEdit { background: #ffffff; border: 1px solid #7d8692;"
    " selection-background-color: #b5232a; selection-color: #ffffff; }"
    "QLineEdit:focus { border: 2px solid #b5232a; padding: 0 5px; }"
    // The focus stays in the field; a ring around the button, which only hands it on, would say otherwise.
    "QPushButton:focus { border: 1px solid #c0272e; padding: 4px 14px; }";

// A text colour in a style sheet would be the placeholder's, too.
QPalette OnWhite(QPalette palette) {
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, QColor(0x1e, 0x23, 0x29));
  palette.setColor(QPalette::PlaceholderText, QColor(0x54, 0x5d, 0x68));
  return palette;
}

}  // namespace

CViewNameEdit::CViewNameEdit(QWidget* parent)
    : QFrame(parent), ui_(std::make_unique<Ui::CViewNameEdit>()), parent_(parent) {
  setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
  BuildForm();
  connect(ui_->ptr_save_btn, &QPushButton::clicked, this, &CViewNameEdit::OnClickedBtn);
  connect(ui_->ptr_name_edit, &QLineEdit::textChanged, this, &CViewNameEdit::HideHintOver);
}

CViewNameEdit::~CViewNameEdit() = default;

void CViewNameEdit::BuildForm() {
  ui_->setupUi(this);
  // The button hands the focus on, so that a click on it is no focus loss of the field.
  ui_->ptr_save_btn->setFocusProxy(ui_->ptr_name_edit);
  setStyleSheet(QString::fromLatin1(kOnWhite));
  ui_->view_name_frame->setStyleSheet(
      QStringLiteral("MarUIControl--CFrame#view_name_frame {background-color: #ffffff}"));
  ui_->ptr_name_edit->setPalette(OnWhite(ui_->ptr_name_edit->palette()));
  ui_->ptr_name_edit->setMaxLength(view_plugin_protocol::kLongestName);
  ui_->ptr_name_edit->setPlaceholderText(NamingRule());
  ui_->ptr_name_edit->installEventFilter(this);
  ui_->ptr_name_edit->setValidator(
      TarnQt::MakePatternValidator(view_plugin_protocol::TypedNamePattern(), ui_->ptr_name_edit));
  new CTypingHint(ui_->ptr_name_edit);
}

QString CViewNameEdit::NamingRule() const {
  return view_plugin_protocol::NamingRule(tr("PleaseEnterCharacterUYoapXK"));
}

void CViewNameEdit::SetMode(int mode) {
  mode_ = mode;
  switch (mode) {
    case AddGroup:
      ui_->ptr_name_edit->setText(view_plugin_protocol::NameWithTime(
          QCoreApplication::translate("Shared", "Orbis-ControlClient.99baf139876846ebb0412f61e6eca142.name")));
      ui_->ptr_name_label->SetText(tr("AddTheGroupSOBHJhrgRz"));
      ui_->ptr_save_btn->setText(tr("Add"));
      break;
    case RenameGroup:
      ui_->ptr_name_label->SetText(tr("TheEditorialTeamQVTMBMCmUa"));
      ui_->ptr_save_btn->setText(tr("Save"));
      break;
    case RenameCycle:
      ui_->ptr_name_label->SetText(QCoreApplication::translate("Shared", "Orbis-ControlClient.CycleName.name"));
      ui_->ptr_save_btn->setText(tr("Save"));
      break;
    default:
      break;
  }
  setAccessibleName(ui_->ptr_name_label->text());
}

void CViewNameEdit::SetTitle(const QString& title) {
  ui_->ptr_name_label->SetText(title);
  setAccessibleName(title);
}

void CViewNameEdit::SetName(const QString& name) {
  name_ = name;
  ui_->ptr_name_edit->setText(name);
}

void CViewNameEdit::SetTyped(const QString& name) {
  ui_->ptr_name_edit->setText(name);
}

void CViewNameEdit::OnClickedBtn() {
  const QString name = ui_->ptr_name_edit->text().trimmed();
  if (name.isEmpty()) {
    tarn_ui_data_controller::CNomalMessageManager::Instance().ShowMessage(
        MarUIControl::GetIndependentWindow(parent_), tr("TheNameIsRequired"), MarUIControl::CNomalMessage::Failure);
    return;
  }
  // Who hears the name may ask a question, and this pop-up may be gone after it.
  const QPointer<CViewNameEdit> self(this);
  Report(name);
  if (self) {
    hide();
  }
}

void CViewNameEdit::Report(const QString& name) {
  if (mode_ == AddGroup) {
    Q_EMIT SignalAddPlanViewGroup(name);
  } else if (mode_ == RenameGroup && name != name_) {
    Q_EMIT SignalEditPlanViewGroup(name);
  } else if (mode_ == RenameCycle && name != name_) {
    Q_EMIT SignalEditCycleName(name);
  }
}

bool CViewNameEdit::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->ptr_name_edit) {
    return QFrame::eventFilter(watched, event);
  }
  switch (event->type()) {
    case QEvent::Enter:
      StopHint();
      hint_timer_ = startTimer(kHintDelay, Qt::CoarseTimer);
      break;
    case QEvent::Leave:
    case QEvent::Hide:  // a confirmed pop-up vanishes under the cursor
      StopHint();
      break;
    case QEvent::FocusOut:
      focusOutEvent(static_cast<QFocusEvent*>(event));
      return true;
    default:
      break;
  }
  return QFrame::eventFilter(watched, event);
}

void CViewNameEdit::StopHint() {
  if (hint_timer_ != 0) {
    killTimer(hint_timer_);
    hint_timer_ = 0;
    QToolTip::hideText();
  }
}

void CViewNameEdit::timerEvent(QTimerEvent* event) {
  const auto* field = ui_->ptr_name_edit;
  if (event->timerId() == hint_timer_ && field->text().isEmpty()) {
    const int y = field->mapTo(this, QPoint()).y() + field->height() - kHintRise;
    const QPoint place(mapFromGlobal(QCursor::pos()).x(), y);
    // A hint that stands already is moved only where its own rectangle no longer holds the place.
    QToolTip::showText(mapToGlobal(place), NamingRule(), this, QRect(place, QSize(1, 1)));
  }
  QFrame::timerEvent(event);
}

void CViewNameEdit::HideHintOver(const QString& text) {
  if (hint_timer_ != 0 && !text.isEmpty()) {
    QToolTip::hideText();
  }
}

void CViewNameEdit::focusOutEvent(QFocusEvent* event) {
  // The border counts as outside: a click meant for what lies behind the pop-up often hits just its edge.
  const QPoint cursor = mapFromGlobal(QCursor::pos());
  const bool own_menu = event->reason() == Qt::PopupFocusReason;  // the field's, which the keyboard opens anywhere
  if (!own_menu && !rect().adjusted(1, 1, 0, 0).contains(cursor)) {
    hide();
  }
  QFrame::focusOutEvent(event);
}

// There is one field; a focus that went on to the frame would count as lost, and the typed name with it.
bool CViewNameEdit::focusNextPrevChild(bool next) {
  Q_UNUSED(next)
  return true;
}

void CViewNameEdit::showEvent(QShowEvent* event) {
  QFrame::showEvent(event);
  if (event->spontaneous()) {
    return;
  }
  KeepOnScreen(this, pos());
  activateWindow();
  ui_->ptr_name_edit->setFocus(Qt::PopupFocusReason);
  ui_->ptr_name_edit->selectAll();
}

void CViewNameEdit::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  if (!event->spontaneous()) {
    Q_EMIT SignalClosed();
  }
}

void CViewNameEdit::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      OnClickedBtn();
      break;
    case Qt::Key_Escape:
      hide();
      break;
    default:
      QFrame::keyPressEvent(event);
      break;
  }
}

}  // namespace TarnPlanView
