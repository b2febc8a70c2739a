#include "tarn_add_plan_widget.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QDateTime>
#include <QKeyEvent>
#include <QLocale>
#include <QScrollArea>
#include <QShowEvent>

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

}  // namespace

CTarnAddPlanWidget::CTarnAddPlanWidget(QWidget* parent) : QWidget(parent), d_(std::make_unique<Private>(this)) {
  d_->Build();
}

// The children look at the document as long as they live.
CTarnAddPlanWidget::~CTarnAddPlanWidget() {
  d_->document.disconnect();
  d_->document.UndoStack().disconnect();
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
    connect(controller, &CStandardViewController::signalShowMessage, this,
            [this](const QString& text, CNomalMessage::AlertState state) { d_->OnControllerMessage(text, state); });
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
  d_->controller->GetPlanInfoByIndexCode(MarUIControl::QStringToString(plan_code));
}

void CTarnAddPlanWidget::OnPlanInfo(const GetPlanDetailResponse& plan) {
  if (d_->awaited.isEmpty() || StringToQString(plan.index_code) != d_->awaited) {
    return;
  }
  d_->awaited.clear();
  d_->conflict->hide();
  d_->document.Load(plan);
  d_->opened_pages = d_->document.Draft().pages;
  d_->SetBusy(QString());
  d_->footer->SetSavePossible(true);
  d_->header->FocusName();
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
  d_->header->Groups()->SetAddMode(d_->document.PlanCode().empty());
  const QString problem = d_->FindProblem();
  if (problem.isEmpty()) {
    d_->Send();
  } else {
    d_->Refuse(problem);
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
  saving->Forget();
  awaited.clear();
  theirs = {};
  opened_pages.clear();
  copying = false;
  grid->SetCurrentWindow(1);
  conflict->hide();
  SetBusy(QString());
  footer->SetSavePossible(true);
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
// waits here and not on the next button, where a key meant for a field would press it.
void CTarnAddPlanWidget::Private::SetBusy(const QString& work) {
  QWidget* focus = QApplication::focusWidget();
  if (!work.isEmpty() && focus && q->isAncestorOf(focus)) {
    had_focus = focus;
    q->setFocus(Qt::OtherFocusReason);
  }
  for (QWidget* part :
       {static_cast<QWidget*>(header), static_cast<QWidget*>(scroll), static_cast<QWidget*>(conflict)}) {
    part->setEnabled(work.isEmpty());
  }
  footer->ShowWork(work);
  if (work.isEmpty() && had_focus) {
    had_focus->setFocus(Qt::OtherFocusReason);
    had_focus.clear();
  }
}

void CTarnAddPlanWidget::Private::Refuse(const QString& reason) {
  Q_EMIT q->SignalMessageTipNeeded(reason, CNomalMessage::Failure);
}

QString CTarnAddPlanWidget::Private::FindProblem() {
  if (!controller) {
    return CTarnAddPlanWidget::tr("The plans are not available now. Try again later.");
  }
  if (document.Draft().FilledWindows() > kMaxFilledWindows) {
    return CTarnAddPlanWidget::tr("A plan holds at most %1 filled windows. Clear some first.").arg(kMaxFilledWindows);
  }
  return header->FindProblem();
}

void CTarnAddPlanWidget::Private::Send() {
  conflict->hide();
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
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

void CTarnAddPlanWidget::Private::OnControllerMessage(const QString& reason, int state) {
  if (state == CNomalMessage::Failure && !awaited.isEmpty()) {
    ShowNotLoaded(reason);
  }
}

void CTarnAddPlanWidget::Private::OnControllerLost() {
  if (!awaited.isEmpty()) {
    ShowNotLoaded(CTarnAddPlanWidget::tr("The plans are not available now. Try again later."));
  }
}

void CTarnAddPlanWidget::Private::ShowNotLoaded(const QString& reason) {
  SetBusy(QString());
  scroll->setEnabled(false);
  header->setEnabled(false);
  footer->SetSavePossible(false);
  conflict->ShowNotLoaded(reason);
}

void CTarnAddPlanWidget::Private::LoadTheirs() {
  conflict->hide();
  document.TakeOver(theirs);
  opened_pages = document.Draft().pages;
  theirs = {};
  header->FocusName();
}

void CTarnAddPlanWidget::Private::Overwrite() {
  document.AdoptRevision(theirs.revision);
  q->Save();
}

void CTarnAddPlanWidget::Private::SaveAsNew() {
  TakeTyped();
  header->Groups()->SetAddMode(true);
  const QString problem = FindProblem();
  if (!problem.isEmpty()) {
    Refuse(problem);
    return;
  }
  conflict->hide();
  copying = true;
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
  const QString mark = CTarnAddPlanWidget::tr(" (copy)");
  saving->SaveCopy(document.Draft().name.left(kLongestName - mark.size()) + mark, Thumbnail());
}

}  // namespace TarnPlanView
