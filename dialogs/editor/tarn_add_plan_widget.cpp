#include "tarn_add_plan_widget.h"

#include <QAbstractSpinBox>
#include <QDateTime>
#include <QKeyEvent>
#include <QLocale>
#include <QScrollArea>
#include <QShowEvent>
#include <utility>

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "conflict_bar.h"
#include "editor_cameras.h"
#include "editor_footer.h"
#include "editor_header.h"
#include "group_chooser.h"
#include "page_thumbnail.h"
#include "plan_saving.h"
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

namespace {

constexpr int kLongestName = 256;
constexpr int kAddRight = 5;
constexpr int kEditRight = 6;

}  // namespace

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

void CTarnAddPlanWidget::OpenNew(const QString& group_code) {
  d_->Reset();
  const QModelIndex group = d_->model ? d_->model->FindIndexByIndexCode(group_code, true) : QModelIndex();
  d_->header->SetTitle(tr("New plan"));
  d_->header->Groups()->SetAddMode(true);
  const QString kind = CViewConfigManager::Instance().IsShowPlanOrView() ? tr("Plan") : tr("View");
  const QString now = QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("yyyyMMddhhmmss"));
  d_->document.StartNew(kind + now, group_code, group.data().toString(), CGroupChooser::FamilyOf(group));
  d_->header->FocusName();
}

void CTarnAddPlanWidget::OpenPlan(const QString& plan_code) {
  d_->Reset();
  d_->document.StartNew(QString(), QString());
  d_->header->SetTitle(tr("Edit plan"));
  d_->header->Groups()->SetAddMode(false);
  d_->awaited = plan_code;
  if (!d_->controller) {
    d_->OnControllerLost();
    return;
  }
  d_->SetBusy(tr("Loading..."));
  const QPointer<CTarnAddPlanWidget> self(this);
  const auto answer = [self, load_no = ++d_->load_no](bool ok, const QString& text) {
    if (self && self->d_->load_no == load_no) {
      self->d_->OnLoadAnswered(ok, text);
    }
  };
  d_->controller->GetPlanInfoByIndexCode(MarUIControl::QStringToString(plan_code), answer);
}

void CTarnAddPlanWidget::OnPlanInfo(const GetPlanDetailResponse& plan) {
  if (d_->awaited.isEmpty() || StringToQString(plan.index_code) != d_->awaited) {
    return;
  }
  d_->awaited.clear();
  d_->conflict->hide();
  d_->document.Load(plan);
  d_->opened_pages = d_->document.Draft().pages;
  const bool is_focus_free = d_->IsFocusFree();
  d_->SetBusy(QString());
  d_->footer->SetSavePossible(true);
  if (is_focus_free) {
    d_->header->FocusName();
  }
}

QString CTarnAddPlanWidget::PlanCode() const {
  return d_->awaited.isEmpty() ? StringToQString(d_->document.PlanCode()) : d_->awaited;
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
  if (!IsDirty()) {
    return true;
  }
  const QPointer<CTarnAddPlanWidget> self(this);
  const int answer = d_->Ask({tr("Unsaved changes"), tr("The plan has changes that are not saved."), tr("Save"),
                              tr("Throw away"), tr("Keep editing")});
  if (!self) {
    return false;
  }
  if (answer == CModalTipDialog::Other) {
    d_->ThrowAway();
    return true;
  }
  if (answer == CModalTipDialog::Confirmed) {
    Save();
  }
  return false;
}

void CTarnAddPlanWidget::Save() {
  if (d_->saving->IsSaving() || !d_->awaited.isEmpty()) {
    return;
  }
  d_->TakeTyped();
  if (d_->HasNothingToSave()) {
    d_->Reset();
    Q_EMIT SignalClosed();
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
  QWidget* refuge = d_->grid && d_->grid->isEnabled() ? static_cast<QWidget*>(d_->grid) : this;
  refuge->setFocus(Qt::OtherFocusReason);
  return true;
}

bool CTarnAddPlanWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
      event->ignore();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void CTarnAddPlanWidget::Private::Reset() {
  const bool given_up = saving->IsSaving();
  saving->Forget();
  awaited.clear();
  theirs = {};
  opened_pages.clear();
  original_gone = renewing = false;
  copy_note.clear();
  grid->SetCurrentWindow(1);
  conflict->hide();
  SetBusy(QString());
  footer->SetSavePossible(true);
  if (given_up) {
    Q_EMIT q->SignalNotSaved();
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

bool CTarnAddPlanWidget::Private::MayLeaveSave() {
  if (!saving->IsSlow()) {
    Refuse(CTarnAddPlanWidget::tr("The plan is being saved. Wait a moment."));
    return false;
  }
  const QPointer<CTarnAddPlanWidget> alive(q);
  const int answer = Ask({CTarnAddPlanWidget::tr("Still saving"),
                          CTarnAddPlanWidget::tr("Nobody has said yet that the plan is saved. It may still be saved "
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

// Disabled as a whole, so that nothing is typed into a plan that is on its way; the input stays in sight. The focus
// waits here and not on the next button, where a key meant for a field would press it; also when the editor is opened
// meanwhile.
void CTarnAddPlanWidget::Private::SetBusy(const QString& work) {
  q->setFocusPolicy(work.isEmpty() ? Qt::NoFocus : Qt::TabFocus);
  QWidget* focus = q->window()->focusWidget();
  if (!work.isEmpty() && focus && q->isAncestorOf(focus)) {
    had_focus = focus;
    q->setFocus(Qt::OtherFocusReason);
  }
  for (QWidget* part :
       {static_cast<QWidget*>(header), static_cast<QWidget*>(scroll), static_cast<QWidget*>(conflict)}) {
    part->setEnabled(work.isEmpty());
  }
  footer->ShowWork(work);
  if (work.isEmpty()) {
    GiveFocusBack();
  }
}

bool CTarnAddPlanWidget::Private::IsFocusFree() const {
  const QWidget* focus = q->window()->focusWidget();
  return !focus || focus == q;
}

void CTarnAddPlanWidget::Private::GiveFocusBack() {
  const QPointer<QWidget> before = std::exchange(had_focus, nullptr);
  if (before && IsFocusFree()) {
    QWidget* to = before->isVisibleTo(q) && before->isEnabledTo(q) ? before.data() : grid;
    to->setFocus(Qt::OtherFocusReason);
  }
}

void CTarnAddPlanWidget::Private::Refuse(const QString& reason) {
  Q_EMIT q->SignalMessageTipNeeded(reason, CNomalMessage::Failure);
}

QString CTarnAddPlanWidget::Private::MissingRight(bool adding) const {
  const PlanDraft& draft = document.Draft();
  const bool is_public = !draft.group_code.isEmpty() && draft.family == PublicTheme;
  auto& host = LyraPluginManager::CResourceBusinessInterfaceMgr::Instance();
  if (!is_public || host.CheckControlPermission(adding ? kAddRight : kEditRight)) {
    return QString();
  }
  return adding ? CTarnAddPlanWidget::tr("You lack the right to add plans.")
                : CTarnAddPlanWidget::tr("You lack the right to edit plans.");
}

QString CTarnAddPlanWidget::Private::FindProblem(bool adding) {
  if (!controller) {
    return CTarnAddPlanWidget::tr("The plans are not available now. Try again later.");
  }
  if (document.Draft().FilledWindows() > kMaxFilledWindows) {
    return CTarnAddPlanWidget::tr("A plan holds at most %1 filled windows. Clear some first.").arg(kMaxFilledWindows);
  }
  // First, because without it there are no groups to choose from.
  const QString missing_right = MissingRight(adding);
  if (!missing_right.isEmpty()) {
    return missing_right;
  }
  header->Groups()->SetAddMode(adding);
  return header->FindProblem();
}

// What the host has changed or dropped is saved at the user's word, even if he has taken back all of his changes.
bool CTarnAddPlanWidget::Private::HasNothingToSave() const {
  return !document.PlanCode().empty() && !document.IsDirty() && conflict->isHidden();
}

void CTarnAddPlanWidget::Private::SaveIt() {
  const QString problem = FindProblem(document.PlanCode().empty());
  if (problem.isEmpty()) {
    Send();
  } else {
    Refuse(problem);
  }
}

void CTarnAddPlanWidget::Private::Send() {
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
  conflict->hide();
  if (!saving->Save(Thumbnail())) {
    SetBusy(QString());
  }
}

// A picture of the live wall that the plan has from elsewhere stays as long as it shows the plan.
std::string CTarnAddPlanWidget::Private::Thumbnail() const {
  const bool as_opened = !opened_pages.isEmpty() && document.Draft().pages == opened_pages;
  if (as_opened || !CViewConfigManager::Instance().SupportThumbnail()) {
    return std::string();
  }
  return PaintThumbnail(document.Draft(), text);
}

void CTarnAddPlanWidget::Private::OnLoadAnswered(bool ok, const QString& reason) {
  if (awaited.isEmpty()) {
    return;  // the plan is here
  }
  // An answer that is no failure, and not the plan either, is another plan.
  ShowNotLoaded(ok ? CTarnAddPlanWidget::tr("The plans are not available now. Try again later.") : reason);
}

void CTarnAddPlanWidget::Private::OnControllerLost() {
  if (!awaited.isEmpty()) {
    ShowNotLoaded(CTarnAddPlanWidget::tr("The plans are not available now. Try again later."));
  }
}

void CTarnAddPlanWidget::Private::ShowNotLoaded(const QString& reason) {
  const bool take_focus = IsFocusFree();
  SetBusy(QString());
  scroll->setEnabled(false);
  header->setEnabled(false);
  footer->SetSavePossible(false);
  conflict->ShowNotLoaded(reason);
  if (take_focus) {
    conflict->FocusRetry();
  }
}

void CTarnAddPlanWidget::Private::OnSaved() {
  SetBusy(QString());
  const QPointer<CTarnAddPlanWidget> alive(q);
  const QString note = std::exchange(copy_note, QString());
  if (!note.isEmpty()) {
    Q_EMIT q->SignalMessageTipNeeded(note, CNomalMessage::Success);
  }
  if (alive) {
    Q_EMIT q->SignalClosed();
  }
}

void CTarnAddPlanWidget::Private::OnNotSaved(const QString& reason) {
  SetBusy(QString());
  copy_note.clear();
  if (std::exchange(renewing, false)) {  // the choice is open again
    header->Groups()->SetAddMode(document.PlanCode().empty());
    conflict->show();
  }
  const QPointer<CTarnAddPlanWidget> alive(q);
  if (!reason.isEmpty()) {
    Refuse(reason);
  }
  if (alive) {
    Q_EMIT q->SignalNotSaved();
  }
}

void CTarnAddPlanWidget::Private::LoadTheirs() {
  conflict->hide();
  document.TakeOver(theirs);
  opened_pages = document.Draft().pages;
  theirs = {};
  header->FocusName();
}

void CTarnAddPlanWidget::Private::Overwrite() {
  TakeTyped();
  document.AdoptRevision(theirs.revision);
  SaveIt();
}

void CTarnAddPlanWidget::Private::SaveAsNew() {
  TakeTyped();
  const QString problem = FindProblem(true);
  if (!problem.isEmpty()) {
    Refuse(problem);
    return;
  }
  renewing = true;
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
  conflict->hide();
  const PlanDraft& draft = document.Draft();
  if (original_gone) {
    saving->SaveAsNew(draft.name, draft.auto_run, Thumbnail());
    return;
  }
  // Beside the original it needs another name, and of two plans that are alike only one can run at its time.
  const QString mark = CTarnAddPlanWidget::tr(" (copy)");
  const QString name = draft.name.left(kLongestName - mark.size()) + mark;
  copy_note = (draft.auto_run ? CTarnAddPlanWidget::tr("Saved as \"%1\". Its automatic run is switched off.")
                              : CTarnAddPlanWidget::tr("Saved as \"%1\"."))
                  .arg(name);
  saving->SaveAsNew(name, false, Thumbnail());
}

}  // namespace TarnPlanView
