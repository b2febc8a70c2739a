#include "editor_footer.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/label.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "plan_document.h"
#include "why_off.h"

namespace TarnPlanView {

CEditorFooter::CEditorFooter(CPlanDocument* document, QWidget* parent) : QWidget(parent), document_(document) {
  setObjectName(QStringLiteral("editor_footer"));
  MakeSteps();
  count_ = new MarUIControl::CLabel(this);
  count_->setObjectName(QStringLiteral("filled_count"));
  count_->setToolTip(tr("Windows with content, of those that a plan may have"));
  work_ = new MarUIControl::CLabel(this);
  work_->setObjectName(QStringLiteral("editor_work"));
  save_ = new MarUIControl::CPrimaryButton(tr("Save"), this);
  save_->setObjectName(QStringLiteral("save_plan_btn"));
  save_->setToolTip(tr("Save the plan (Ctrl+S)"));
  cancel_ = new MarUIControl::CPushButton(tr("Cancel"), this);
  cancel_->setObjectName(QStringLiteral("cancel_plan_btn"));
  cancel_->setToolTip(tr("Close the editor (Esc)"));
  LayOut();
  connect(save_, &QPushButton::clicked, this, &CEditorFooter::SignalSave);
  connect(cancel_, &QPushButton::clicked, this, &CEditorFooter::SignalCancel);
  connect(document_, &CPlanDocument::SignalChanged, this, &CEditorFooter::RenewCount);
  RenewCount();
  ShowWork(QString());
}

QToolButton* CEditorFooter::MakeStep(const char* name, const QString& text, const QString& tip) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(text);
  button->setToolTip(tip);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

void CEditorFooter::MakeSteps() {
  QUndoStack* stack = &document_->UndoStack();
  undo_ = MakeStep("undo_btn", tr("Undo"), QString());
  redo_ = MakeStep("redo_btn", tr("Redo"), QString());
  connect(undo_, &QToolButton::clicked, stack, &QUndoStack::undo);
  connect(redo_, &QToolButton::clicked, stack, &QUndoStack::redo);
  connect(stack, &QUndoStack::indexChanged, this, &CEditorFooter::RenewButtons);
}

void CEditorFooter::LayOut() {
  for (QWidget* button : {static_cast<QWidget*>(save_), static_cast<QWidget*>(cancel_)}) {
    button->setMinimumSize(96, 32);
  }
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(undo_);
  row->addWidget(redo_);
  row->addSpacing(8);
  row->addWidget(count_);
  row->addWidget(work_, 1);
  row->addWidget(save_);
  row->addWidget(cancel_);
}

void CEditorFooter::RenewCount() {
  const int filled = document_->Draft().FilledWindows();
  const QString text = tr("%1 / %2").arg(filled).arg(kMaxFilledWindows);
  if (count_->text() == text) {
    return;
  }
  count_->setText(text);
  count_->setAccessibleName(tr("%1 of %2 windows filled").arg(filled).arg(kMaxFilledWindows));
  count_->setProperty("full", filled >= kMaxFilledWindows);
  count_->style()->unpolish(count_);
  count_->style()->polish(count_);
}

void CEditorFooter::RenewButtons() {
  const QUndoStack& stack = document_->UndoStack();
  const bool idle = work_->text().isEmpty();
  undo_->setEnabled(idle && stack.canUndo());
  redo_->setEnabled(idle && stack.canRedo());
  undo_->setToolTip(tr("Nothing to undo (Ctrl+Z)"));
  if (stack.canUndo()) {
    undo_->setToolTip(tr("Undo: %1 (Ctrl+Z)").arg(stack.undoText()));
  }
  redo_->setToolTip(tr("Nothing to redo (Ctrl+Shift+Z)"));
  if (stack.canRedo()) {
    redo_->setToolTip(tr("Redo: %1 (Ctrl+Shift+Z)").arg(stack.redoText()));
  }
  QString why_not_saved = work_->text();
  if (idle && !save_possible_) {
    why_not_saved = tr("The plan could not be loaded.");
  }
  SetWhyOff(save_, why_not_saved);
}

void CEditorFooter::SetSavePossible(bool possible) {
  save_possible_ = possible;
  RenewButtons();
}

void CEditorFooter::ShowWork(const QString& work) {
  work_->setText(work);
  if (!work.isEmpty()) {
    MarUIControl::AnnounceAlert(work_);
  }
  RenewButtons();
}

}  // namespace TarnPlanView
