#include "editor_header.h"

#include <QHBoxLayout>
#include <QTimeEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "MarUIControl/label.h"
#include "MarUIControl/placehold_line_edit.h"
#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/switch_control.h"
#include "group_chooser.h"
#include "plan_document.h"
#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "qt/pattern_validator.h"
#include "typing_hint.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using MarUIControl::CLabel;

namespace {

constexpr int kFieldHeight = 32;
constexpr int kTimesWidth = 240;

}  // namespace

CEditorHeader::CEditorHeader(CPlanDocument* document, QWidget* parent) : QWidget(parent), document_(document) {
  setObjectName(QStringLiteral("editor_header"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  column->addWidget(MakeTitle());
  column->addWidget(MakeFields());
  MakeTimedRun();
  column->addWidget(run_row_);
  connect(document_, &CPlanDocument::SignalChanged, this, [this](int change, int) {
    if (change & CPlanDocument::HeadChanged) {
      ShowDocument();
    }
  });
  connect(document_, &CPlanDocument::SignalDirtyChanged, dirty_, &QWidget::setVisible);
  ShowDocument();
}

QWidget* CEditorHeader::MakeTitle() {
  auto* bar = new QWidget(this);
  title_ = new CLabel(bar);
  title_->setObjectName(QStringLiteral("editor_title"));
  dirty_ = new CLabel(tr("Not saved yet"), bar);
  dirty_->setObjectName(QStringLiteral("editor_dirty_mark"));
  dirty_->setVisible(document_->IsDirty());
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(title_, 1);
  row->addWidget(dirty_);
  return bar;
}

QWidget* CEditorHeader::MakeFields() {
  auto* fields = new QWidget(this);
  MakeNameField();
  groups_ = new CGroupChooser(fields);
  groups_->setFixedHeight(kFieldHeight);
  connect(groups_, &CGroupChooser::SignalGroupChosen, document_, &CPlanDocument::SetGroup);
  auto* row = new QHBoxLayout(fields);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(new CLabel(tr("Name"), fields));
  row->addWidget(name_, 3);
  row->addSpacing(8);
  row->addWidget(new CLabel(tr("Group"), fields));
  row->addWidget(groups_, 2);
  return fields;
}

void CEditorHeader::MakeNameField() {
  name_ = new MarUIControl::CPlaceholdLineEdit(this);
  name_->setObjectName(QStringLiteral("plan_name_edit"));
  name_->setAccessibleName(tr("Name"));
  name_->setFixedHeight(kFieldHeight);
  name_->setValidator(TarnQt::MakePatternValidator(view_plugin_protocol::TypedNamePattern(), name_));
  new CTypingHint(name_);
  name_->setMaxLineEditLength(view_plugin_protocol::kLongestName);
  const QString rule = tr("1 to 256 characters, none of \\ / : * ? \" < | ' % >");
  name_->setPlaceholderText(rule);
  name_->setToolTip(rule);
  connect(name_, &QLineEdit::textChanged, this, [this, rule](const QString& text) {
    name_->setToolTip(text.isEmpty() ? rule : text);
    if (!showing_) {
      document_->SetName(text);
    }
  });
  connect(name_, &QLineEdit::editingFinished, this, &CEditorHeader::ShowBeginOfName);
}

void CEditorHeader::MakeTimedRun() {
  run_row_ = new QWidget(this);
  run_ = new MarUIControl::CSwitchControl(run_row_);
  run_->setObjectName(QStringLiteral("auto_run_switch"));
  run_->setAccessibleName(tr("Automatic run"));
  times_ = new MarUIControl::CRangeTimeEdit(run_row_);
  times_->setObjectName(QStringLiteral("auto_run_times"));
  times_->setAccessibleName(tr("Begin and end of the daily run"));
  times_->setFixedSize(kTimesWidth, kFieldHeight);
  note_ = new CLabel(tr("Over midnight: never starts"), run_row_);
  note_->setObjectName(QStringLiteral("over_midnight_note_"));
  auto* row = new QHBoxLayout(run_row_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(new CLabel(tr("Automatic run"), run_row_));
  row->addWidget(run_);
  row->addWidget(times_);
  row->addWidget(note_, 1);
  row->addStretch();
  run_row_->setVisible(CViewConfigManager::Instance().IsSupportTimedPlay());
  connect(run_, &QAbstractButton::toggled, document_, &CPlanDocument::SetAutoRun);
  connect(times_, &MarUIControl::CRangeTimeEdit::SignalTimeChanged, this, [this](const QTime& begin, const QTime& end) {
    if (!showing_) {
      document_->SetTimes(begin, end);
    }
  });
}

void CEditorHeader::ShowDocument() {
  const PlanDraft& draft = document_->Draft();
  showing_ = true;
  if (name_->text() != draft.name) {
    name_->setText(draft.name);
    ShowBeginOfName();
  }
  groups_->ShowGroup(draft.group_code, draft.group_name);
  run_->setToggle(draft.auto_run);
  times_->SetBeginTime(draft.begin);
  times_->SetEndTime(draft.end);
  showing_ = false;
  ShowTimes();
}

// A long name is known by its beginning; the field keeps its cursor in sight.
void CEditorHeader::ShowBeginOfName() {
  if (!name_->hasFocus() && !name_->hasSelectedText()) {
    name_->setCursorPosition(0);
  }
}

void CEditorHeader::ShowTimes() {
  const PlanDraft& draft = document_->Draft();
  if (!draft.auto_run && times_->isAncestorOf(window()->focusWidget())) {
    run_->setFocus(Qt::OtherFocusReason);  // else the keys would go nowhere
  }
  // They keep their place, so that the switch does not push the pages about.
  times_->setEnabled(draft.auto_run);
  const bool over_midnight = draft.auto_run && draft.begin > draft.end;
  note_->setVisible(over_midnight);
  QString heard;
  if (over_midnight) {
    heard = note_->text();
  }
  for (QTimeEdit* edit : times_->findChildren<QTimeEdit*>()) {
    if (edit->accessibleDescription() != heard) {
      edit->setAccessibleDescription(heard);  // read out at once
    }
  }
}

void CEditorHeader::SetTitle(const QString& title) {
  title_->setText(title);
}

void CEditorHeader::FocusName() {
  name_->setFocus(Qt::PopupFocusReason);
  name_->selectAll();
  // What shows the editor hands the focus about, which ends a selection.
  QTimer::singleShot(0, name_, [this] {
    if (name_->hasFocus() && !name_->isModified()) {
      name_->selectAll();
    }
  });
}

QString CEditorHeader::FindProblem() {
  QString problem = NameProblem();
  QWidget* at = name_;
  if (problem.isEmpty()) {
    problem = groups_->Problem();
    at = groups_;
  }
  const PlanDraft& draft = document_->Draft();
  if (problem.isEmpty() && !run_row_->isHidden() && draft.auto_run && draft.begin == draft.end) {
    problem = tr("The daily run needs an end other than its begin.");
    at = times_;
  }
  if (!problem.isEmpty()) {
    at->setFocus(Qt::OtherFocusReason);
  }
  return problem;
}

// Apostrophe and percent cannot be typed, but plans made elsewhere may have them.
QString CEditorHeader::NameProblem() const {
  using view_plugin_protocol::NameFault;
  switch (view_plugin_protocol::FaultOfName(document_->Draft().name)) {
    case NameFault::Empty:
      return tr("The plan needs a name.");
    case NameFault::ForbiddenCharacter:
      return tr("The name must not contain any of / \\ : * ? \" < > |");
    case NameFault::TooLong:
      return tr("The name is longer than 256 characters.");
    case NameFault::ControlCharacter:  // the service names them
    case NameFault::None:
      return QString();
  }
  return QString();
}

}  // namespace TarnPlanView
