#include <QDateTime>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "conflict_bar.h"
#include "conflict_words.h"
#include "editor_header.h"
#include "group_chooser.h"
#include "page_thumbnail.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/rights.h"
#include "plan_saving.h"
#include "plan_watch.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget_p.h"
#include "theme_node_type.h"
#include "view_config_manager.h"

// How the plan editor saves its plan.
namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using view_plugin_protocol::GetPlanDetailResponse;

QString CTarnAddPlanWidget::Private::MissingRight(bool adding) const {
  const PlanDraft& draft = document.Draft();
  const bool is_public = !draft.group_code.isEmpty() && draft.family == PublicTheme;
  const auto right = adding ? view_plugin_protocol::AddRight : view_plugin_protocol::EditRight;
  if (!is_public || HasRight(right)) {
    return QString();
  }
  return LackOf(right);
}

QString CTarnAddPlanWidget::Private::FindProblem(bool adding) {
  if (!controller) {
    return NotAvailable();
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
  return !document.PlanCode().empty() && !document.IsDirty() && standing.kind == PlanStanding::Kind::Same;
}

bool CTarnAddPlanWidget::Private::IsRefused(bool adding) {
  const QString problem = FindProblem(adding);
  if (!problem.isEmpty()) {
    Refuse(problem);
  }
  return !problem.isEmpty();
}

void CTarnAddPlanWidget::Private::SaveIt() {
  if (!IsRefused(document.PlanCode().empty())) {
    Send();
  }
}

void CTarnAddPlanWidget::Private::Send() {
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
  conflict_bar->hide();
  if (!saving->Save(Thumbnail())) {
    SetBusy(QString());
  }
}

// A picture of the live wall that the plan has from elsewhere stays as long as it shows the plan.
std::string CTarnAddPlanWidget::Private::Thumbnail() const {
  const bool is_theirs = !document.PlanCode().empty() && document.Draft().pages == document.Saved().pages;
  if (is_theirs || !CViewConfigManager::Instance().SupportThumbnail()) {
    return std::string();
  }
  return PaintThumbnail(document.Draft(), text);
}

// The document is that plan now.
void CTarnAddPlanWidget::Private::OnStored(const QString& plan_code, const QString& group_code) {
  const QPointer<CTarnAddPlanWidget> alive(q);
  const QString note = std::exchange(stored_note, QString());
  standing = {};
  conflict_bar->hide();
  watch->Stop();
  Q_EMIT q->SignalStored(plan_code, group_code);
  if (!alive) {
    return;
  }
  if (document.IsDirty()) {
    watch->Watch(document.PlanCode(), document.GroupCode());
    OnNotStored(CTarnAddPlanWidget::tr("The plan was saved without the last changes."));
    return;
  }
  SetBusy(QString());
  if (!note.isEmpty()) {
    Q_EMIT q->SignalMessageTipNeeded(note, CNomalMessage::Success);
  }
  if (alive) {
    Q_EMIT q->SignalClosed();
  }
}

void CTarnAddPlanWidget::Private::OnNotStored(const QString& reason) {
  SetBusy(QString());
  watch->LookSoon();  // what was noticed meanwhile has been passed over
  stored_note.clear();
  header->Groups()->SetAddMode(document.PlanCode().empty());  // a new plan may have been asked for
  ShowStanding();
  const QPointer<CTarnAddPlanWidget> alive(q);
  if (!reason.isEmpty()) {
    Refuse(reason);
  }
  if (alive) {
    Q_EMIT q->SignalNotStored();
  }
}

void CTarnAddPlanWidget::Private::OnConflict(SaveConflict found, const GetPlanDetailResponse& plan) {
  standing.kind = PlanStanding::Kind::Refused;
  if (found == SaveConflict::Deleted) {
    standing.kind = PlanStanding::Kind::Deleted;
  }
  standing.theirs = plan;
  OnNotStored(QString());
}

// A save that is under way finds out by itself.
void CTarnAddPlanWidget::Private::OnLooked(const HostCalls::Result<GetPlanDetailResponse>& now) {
  if (saving->IsSaving() || standing.IsAwaited()) {
    return;
  }
  if (now.ok) {
    document.RenameGroup(now.response.group_index_code, now.response.group_name);
  }
  switch (StepAfterLook({document.Revision(), standing.Said(), standing.theirs.revision}, now)) {
    case NewsStep::Nothing:
      return;
    case NewsStep::SayChanged:
      standing.kind = PlanStanding::Kind::Changed;
      break;
    case NewsStep::SayDeleted:
      standing.kind = PlanStanding::Kind::Deleted;
      break;
    case NewsStep::TakeBack:
      standing.kind = PlanStanding::Kind::Same;
      break;
  }
  standing.theirs = now.response;
  ShowStanding();
}

void CTarnAddPlanWidget::Private::ShowStanding() {
  if (saving->IsSaving()) {
    return;
  }
  const bool with_back = document.ReplacedEdits().has_value();
  conflict_bar->SetNewRefused(MissingRight(true));
  switch (NewsOf(standing.kind, with_back)) {
    case ConflictNews::None:
      return conflict_bar->hide();
    case ConflictNews::NotLoaded:
      return conflict_bar->ShowNotLoaded(MarUIControl::StringToQString(standing.theirs.error_info));
    case ConflictNews::Changed:
      return conflict_bar->ShowChanged(WhatTheySaved());
    case ConflictNews::Refused:
      return conflict_bar->ShowRefused(
          WhatTheySaved() + QLatin1Char(' ') + CTarnAddPlanWidget::tr("Your version is not saved yet."), with_back);
    case ConflictNews::Deleted:
      return conflict_bar->ShowDeleted(HowItWasDeleted(), with_back);
    case ConflictNews::Theirs:
      return conflict_bar->ShowTheirs(WhoseIsShown());
    case ConflictNews::Newer:
      return conflict_bar->ShowNewer(WhatTheySaved());
  }
}

void CTarnAddPlanWidget::Private::OnUndoMoved() {
  if (conflict_bar->OffersWayBack() != document.ReplacedEdits().has_value()) {
    ShowStanding();
  }
}

// Only the host can say who has deleted it.
QString CTarnAddPlanWidget::Private::HowItWasDeleted() const {
  return MarUIControl::StringToQString(standing.theirs.error_info) + QLatin1Char(' ') +
         CTarnAddPlanWidget::tr("Saving makes a new plan of what you see here.");
}

QString CTarnAddPlanWidget::Private::WhatTheySaved() const {
  const QString saved = CConflictWords::SavedBy(standing.theirs, QDateTime::currentDateTime());
  const QString changes = CConflictWords::Changes(document.Saved(), CPlanDocument::DraftOf(standing.theirs));
  return QStringLiteral("%1 %2").arg(saved, changes).trimmed();
}

QString CTarnAddPlanWidget::Private::WhoseIsShown() const {
  const QString whose = CTarnAddPlanWidget::tr("This is their version.");
  if (standing.theirs.index_code.empty()) {
    return whose;
  }
  return CConflictWords::SavedBy(standing.theirs, QDateTime::currentDateTime()) + QLatin1Char(' ') + whose;
}

void CTarnAddPlanWidget::Private::LoadTheirs() {
  TakeTyped();
  standing.kind = PlanStanding::Kind::Same;
  document.TakeOver(standing.theirs);
  standing.theirs.pages.clear();
  ShowStanding();
  if (document.ReplacedEdits()) {
    conflict_bar->FocusBack();
  } else {
    header->FocusName();
  }
}

void CTarnAddPlanWidget::Private::GoOverTheirs() {
  if (standing.IsChanged()) {
    document.GoOver(standing.theirs);
    standing = {};
  }
}

void CTarnAddPlanWidget::Private::KeepMine() {
  TakeTyped();
  GoOverTheirs();
  ShowStanding();
}

// Whatever of theirs was spoken of, a save goes over it now.
void CTarnAddPlanWidget::Private::BackToMine() {
  GoOverTheirs();
  document.UndoStack().setIndex(document.ReplacedEdits().value_or(document.UndoStack().index()));
}

void CTarnAddPlanWidget::Private::Overwrite() {
  TakeTyped();
  if (!IsRefused(false)) {
    GoOverTheirs();
    Send();
  }
}

void CTarnAddPlanWidget::Private::SaveAsNew() {
  TakeTyped();
  if (IsRefused(true)) {
    return;
  }
  SetBusy(CTarnAddPlanWidget::tr("Saving..."));
  conflict_bar->hide();
  const PlanDraft& draft = document.Draft();
  if (standing.kind == PlanStanding::Kind::Deleted) {
    saving->SaveAsNew(draft.name, draft.auto_run, Thumbnail());
    return;
  }
  // Beside the original it needs another name, and of two plans that are alike only one can run at its time.
  const QString mark = CTarnAddPlanWidget::tr(" (copy)");
  const QString name = draft.name.left(view_plugin_protocol::kLongestName - mark.size()) + mark;
  QString note = CTarnAddPlanWidget::tr("Saved as \"%1\".");
  if (draft.auto_run) {
    note = CTarnAddPlanWidget::tr("Saved as \"%1\". Its automatic run is switched off.");
  }
  stored_note = note.arg(name);
  saving->SaveAsNew(name, false, Thumbnail());
}

}  // namespace TarnPlanView
