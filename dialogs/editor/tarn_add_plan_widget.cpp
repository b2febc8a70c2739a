#include "tarn_add_plan_widget.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QScrollArea>
#include <QShowEvent>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "call_answer.h"
#include "conflict_bar.h"
#include "editor_cameras.h"
#include "editor_footer.h"
#include "editor_header.h"
#include "group_chooser.h"
#include "plan_rules/names.h"
#include "plan_saving.h"
#include "plan_watch.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget_p.h"
#include "view_config_manager.h"
#include "window_grid.h"

namespace TarnPlanView {

using MarUIControl::CModalTipDialog;
using MarUIControl::CNomalMessage;
using MarUIControl::StringToQString;
using view_plugin_protocol::GetPlanDetailResponse;

CTarnAddPlanWidget::CTarnAddPlanWidget(QWidget* parent) : QWidget(parent), d_(std::make_unique<Private>(this)) {
  d_->Build();
}

// The children look at the document as long as they live.
CTarnAddPlanWidget::~CTarnAddPlanWidget() {
  d_->document.disconnect();
  d_->document.UndoStack().disconnect();
  d_->grid = nullptr;  // no refuge for the focus of those that go after it
  qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
  delete d_->saving;
  delete d_->watch;
}

void CTarnAddPlanWidget::SetController(CStandardViewController* controller) {
  if (d_->controller == controller) {
    return;
  }
  if (d_->controller) {
    disconnect(d_->controller, nullptr, this, nullptr);
  }
  d_->controller = controller;
  d_->saving->SetController(controller);
  d_->header->Groups()->SetController(controller);
  d_->OnControllerLost();
  if (controller) {
    connect(controller, &QObject::destroyed, this, [this] { d_->OnControllerLost(); });
  }
}

void CTarnAddPlanWidget::SetModel(CStandardPlanModel* model) {
  d_->model = model;
  d_->header->Groups()->SetModel(model);
}

void CTarnAddPlanWidget::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  d_->cameras->SetLogicNodeParam(param);
}

void CTarnAddPlanWidget::OpenNew(const QString& group_code, const QString& group_name, int family) {
  d_->Reset();
  QString name = group_name;
  if (d_->model) {
    const QModelIndex group = d_->model->FindIndexByIndexCode(group_code, true);
    if (group.isValid()) {
      name = group.data().toString();
      family = CGroupChooser::FamilyOf(group);
    }
  }
  d_->header->SetTitle(tr("New plan"));
  d_->header->Groups()->SetAddMode(true);
  const QString kind = CViewConfigManager::Instance().IsShowPlanOrView() ? tr("Plan") : tr("View");
  d_->document.StartNew(view_plugin_protocol::NameWithTime(kind), group_code, name, family);
  d_->header->FocusName();
}

void CTarnAddPlanWidget::OpenPlan(const QString& plan_code) {
  d_->Reset();
  d_->document.StartNew(QString(), QString());
  d_->header->SetTitle(tr("Edit plan"));
  d_->header->Groups()->SetAddMode(false);
  d_->standing = {PlanStanding::Kind::Loading, plan_code};
  if (!d_->controller) {
    d_->OnControllerLost();
    return;
  }
  d_->SetBusy(tr("Loading..."));
  const auto on_answer = [d = d_.get(), asked = d_->loads.Current()](const CallAnswer& answer) {
    if (!asked.IsDropped()) {
      d->OnLoadAnswered(answer);
    }
  };
  d_->controller->GetPlanInfoByIndexCode(MarUIControl::QStringToString(plan_code), on_answer);
}

void CTarnAddPlanWidget::OnPlanInfo(const GetPlanDetailResponse& plan) {
  if (!d_->standing.IsAwaited() || StringToQString(plan.index_code) != d_->standing.awaited) {
    return;
  }
  d_->standing = {};
  d_->document.Load(plan);
  d_->ShowStanding();
  d_->watch->Watch(plan.index_code, plan.group_index_code);
  const bool is_focus_free = d_->focus.IsFree();
  d_->SetBusy(QString());
  d_->footer->SetSavePossible(true);
  if (is_focus_free) {
    d_->header->FocusName();
  }
}

QString CTarnAddPlanWidget::PlanCode() const {
  if (d_->standing.IsAwaited()) {
    return d_->standing.awaited;
  }
  return StringToQString(d_->document.PlanCode());
}

bool CTarnAddPlanWidget::IsSaving() const {
  return d_->saving->IsSaving();
}

bool CTarnAddPlanWidget::IsDirty() const {
  d_->TakeTyped();
  return d_->document.IsDirty();
}

bool CTarnAddPlanWidget::MayClose() {
  if (d_->saving->IsSaving()) {
    return d_->MayLeaveSave();
  }
  const bool is_dirty = IsDirty();
  if (!is_dirty && !d_->HidesEdits()) {
    d_->Reset();
    return true;
  }
  const QPointer<CTarnAddPlanWidget> self(this);
  const int answer = d_->AskBeforeLoss();
  if (!self) {
    return false;
  }
  if (answer == CModalTipDialog::Other) {
    d_->ThrowAway();
    return true;
  }
  if (answer == CModalTipDialog::Confirmed) {
    if (!is_dirty) {
      d_->BackToMine();
    }
    Save();
  }
  return false;
}

void CTarnAddPlanWidget::Save() {
  if (d_->saving->IsSaving() || d_->standing.IsAwaited()) {
    return;
  }
  d_->TakeTyped();
  if (d_->HasNothingToSave()) {
    Cancel();
  } else if (d_->standing.kind == PlanStanding::Kind::Deleted) {
    d_->SaveAsNew();
  } else {
    d_->SaveIt();
  }
}

void CTarnAddPlanWidget::Cancel() {
  const QPointer<CTarnAddPlanWidget> self(this);
  if (MayClose() && self) {
    d_->Reset();
    Q_EMIT SignalClosed();
  }
}

void CTarnAddPlanWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) {
    d_->cameras->Reload();
  }
}

// The window around the editor has these keys, too; while the focus is in here they mean the plan that is being edited.
bool CTarnAddPlanWidget::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Save) || key->matches(QKeySequence::Find)) {
      event->accept();
      return true;
    }
  }
  return QWidget::event(event);
}

void CTarnAddPlanWidget::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    Cancel();
  } else if (event->matches(QKeySequence::Save)) {
    if (d_->scroll->isEnabled()) {
      Save();
    }
  } else if (event->matches(QKeySequence::Find)) {
    d_->cameras->FocusSearch();
  } else {
    QWidget::keyPressEvent(event);
  }
}

// Called for Tab, and when the widget with the focus is disabled or hidden: its neighbour must not get the next press
// of the key that was meant for it.
bool CTarnAddPlanWidget::focusNextPrevChild(bool next) {
  const QWidget* focus = window()->focusWidget();
  const bool lost = isVisible() && focus && isAncestorOf(focus) && !(focus->isEnabled() && focus->isVisible());
  if (!lost) {
    return QWidget::focusNextPrevChild(next);
  }
  if (d_->grid && d_->grid->isEnabled()) {
    d_->grid->setFocus(Qt::OtherFocusReason);
  } else {
    setFocus(Qt::OtherFocusReason);
  }
  return true;
}

// A field would have undo for itself, but it is the document's.
bool CTarnAddPlanWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
      event->ignore();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CTarnAddPlanWidget::Private::Reset() {
  const bool was_saving = saving->IsSaving();
  saving->Forget();
  watch->Stop();
  loads.Drop();
  standing = {};
  stored_note.clear();
  grid->SetCurrentWindow(1);
  cameras->ClearSearch();
  conflict_bar->hide();
  SetBusy(QString());
  footer->SetSavePossible(true);
  if (was_saving) {
    Q_EMIT q->SignalNotStored();
  }
}

void CTarnAddPlanWidget::Private::ThrowAway() {
  Reset();
  document.StartNew(QString(), QString());
}

// What stands in a field counts, also before the field is left.
void CTarnAddPlanWidget::Private::TakeTyped() {
  const auto fields = q->findChildren<QAbstractSpinBox*>();
  for (QAbstractSpinBox* field : fields) {
    field->interpretText();
  }
}

int CTarnAddPlanWidget::Private::Ask(const Question& words) {
  const QPointer<CModalTipDialog> question(new CModalTipDialog(q));
  question->SetDialogModel(CModalTipDialog::QuestionModel);
  question->SetDialogSize(CModalTipDialog::LargeSize);  // for three buttons in words
  question->SetTitle(words.title);
  question->SetContent(words.text);
  question->SetConfirmText(words.yes);
  question->SetOtherText(words.other);
  question->SetCancelText(words.no);
  const int answer = question->exec();
  delete question.data();
  return answer;
}

int CTarnAddPlanWidget::Private::AskBeforeLoss() {
  if (HidesEdits()) {
    return Ask({CTarnAddPlanWidget::tr("Unsaved changes"),
                CTarnAddPlanWidget::tr("What you see is their version. Yours is not saved."),
                CTarnAddPlanWidget::tr("Save mine"), CTarnAddPlanWidget::tr("Throw away"),
                CTarnAddPlanWidget::tr("Keep editing")});
  }
  return Ask({CTarnAddPlanWidget::tr("Unsaved changes"),
              CTarnAddPlanWidget::tr("The plan has changes that are not saved."), CTarnAddPlanWidget::tr("Save"),
              CTarnAddPlanWidget::tr("Throw away"), CTarnAddPlanWidget::tr("Keep editing")});
}

bool CTarnAddPlanWidget::Private::MayLeaveSave() {
  if (!saving->IsSlow()) {
    Refuse(CTarnAddPlanWidget::tr("The plan is being saved. Wait a moment."));
    return false;
  }
  const QPointer<CTarnAddPlanWidget> alive(q);
  const int answer = Ask({CTarnAddPlanWidget::tr("Still saving"),
                          CTarnAddPlanWidget::tr("It is not known yet whether the plan is saved. It may still be saved "
                                                 "when you leave now."),
                          CTarnAddPlanWidget::tr("Leave"), QString(), CTarnAddPlanWidget::tr("Wait")});
  if (!alive || answer != CModalTipDialog::Confirmed) {
    return false;
  }
  if (saving->IsSaving()) {
    ThrowAway();
  }
  return !document.IsDirty();
}

// Disabled as a whole, so that nothing is typed into a plan that is on its way; the input stays in sight.
void CTarnAddPlanWidget::Private::SetBusy(const QString& work) {
  const bool idle = work.isEmpty();
  if (!idle) {
    focus.Take();
  }
  header->setEnabled(idle);
  scroll->setEnabled(idle);
  conflict_bar->setEnabled(idle);
  footer->ShowWork(work);
  if (idle) {
    focus.GiveBack(grid);
  }
}

void CTarnAddPlanWidget::Private::Refuse(const QString& reason) {
  Q_EMIT q->SignalMessageTipNeeded(reason, CNomalMessage::Failure);
}

QString CTarnAddPlanWidget::Private::NotAvailable() {
  return CTarnAddPlanWidget::tr("The plans are not available now. Try again later.");
}

void CTarnAddPlanWidget::Private::OnLoadAnswered(const CallAnswer& answer) {
  if (!standing.IsAwaited()) {
    return;  // the plan is here
  }
  // An answer that is no failure, and not the plan either, is another plan.
  ShowNotLoaded(answer.ok ? NotAvailable() : answer.text);
}

void CTarnAddPlanWidget::Private::OnControllerLost() {
  if (standing.IsAwaited()) {
    ShowNotLoaded(NotAvailable());
  }
}

void CTarnAddPlanWidget::Private::ShowNotLoaded(const QString& reason) {
  const bool take_focus = focus.IsFree();
  SetBusy(QString());
  scroll->setEnabled(false);
  header->setEnabled(false);
  footer->SetSavePossible(false);
  standing.kind = PlanStanding::Kind::NotLoaded;
  standing.theirs.error_info = MarUIControl::QStringToString(reason);
  ShowStanding();
  if (take_focus) {
    conflict_bar->FocusRetry();
  }
}

}  // namespace TarnPlanView
