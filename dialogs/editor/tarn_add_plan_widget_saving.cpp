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
  return !document.PlanCode().empty() && !document.IsDirty() && conflict == SaveConflict::None;
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
  const bool as_opened = !opened_pages.isEmpty() && document.Draft().pages == opened_pages;
  if (as_opened || !CViewConfigManager::Instance().SupportThumbnail()) {
    return std::string();
  }
  return PaintThumbnail(document.Draft(), text);
}

// The document is that plan now.
void CTarnAddPlanWidget::Private::OnStored(const QString& plan_code, const QString& group_code) {
  const QPointer<CTarnAddPlanWidget> alive(q);
  const QString note = std::exchange(copy_note, std::nullopt).value_or(QString());
  conflict = SaveConflict::None;
  theirs = {};
  mine.reset();
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
  if (copy_note) {    // the choice is open again
    copy_note.reset();
    header->Groups()->SetAddMode(document.PlanCode().empty());
    conflict_bar->show();
  } else if (mine) {
    ShowNews();
  }
  const QPointer<CTarnAddPlanWidget> alive(q);
  if (!reason.isEmpty()) {
    Refuse(reason);
  }
  if (alive) {
    Q_EMIT q->SignalNotStored();
  }
}

void CTarnAddPlanWidget::Private::OnConflict(SaveConflict found, const GetPlanDetailResponse& plan) {
  conflict = found;
  theirs = plan;
  mine.reset();
  OnNotStored(QString());
  conflict_bar->SetNewRefused(MissingRight(true));
  if (found == SaveConflict::Deleted) {
    SayDeleted();
  } else {
    conflict_bar->ShowRefused(WhatTheySaved() + QLatin1Char(' ') +
                              CTarnAddPlanWidget::tr("Your version is not saved yet."));
  }
}

// A save that is under way finds out by itself.
void CTarnAddPlanWidget::Private::OnLooked(const HostCalls::Result<GetPlanDetailResponse>& now) {
  if (saving->IsSaving() || !awaited.isEmpty()) {
    return;
  }
  if (now.ok) {
    document.RenameGroup(now.response.group_index_code, now.response.group_name);
  }
  const SaveConflict said = conflict_bar->isHidden() ? SaveConflict::None : conflict;
  const NewsStep step = StepAfterLook({document.Revision(), said, theirs.revision}, now);
  if (step == NewsStep::Nothing) {
    return;
  }
  conflict = ConflictOf(now, document.Revision());
  theirs = now.response;
  ShowNews();
}

// While theirs is shown the way back stays, whatever happens elsewhere.
void CTarnAddPlanWidget::Private::ShowNews() {
  const bool is_newer = conflict == SaveConflict::ChangedElsewhere && theirs.revision > document.Revision();
  conflict_bar->SetNewRefused(MissingRight(true));
  if (conflict == SaveConflict::Deleted) {
    SayDeleted();
  } else if (is_newer && mine) {
    conflict_bar->ShowNewer(WhatTheySaved());
  } else if (is_newer) {
    conflict_bar->ShowChanged(WhatTheySaved());
  } else if (mine) {
    conflict_bar->ShowTheirs(CTarnAddPlanWidget::tr("This is their version."));
  } else {
    conflict_bar->hide();
  }
}

// Only the host can say who has deleted it.
void CTarnAddPlanWidget::Private::SayDeleted() {
  const QString gone = MarUIControl::StringToQString(theirs.error_info) + QLatin1Char(' ') +
                       CTarnAddPlanWidget::tr("Saving makes a new plan of what you see here.");
  conflict_bar->ShowDeleted(gone, mine.has_value());
}

QString CTarnAddPlanWidget::Private::WhatTheySaved() const {
  const QString saved = CConflictWords::SavedBy(theirs, QDateTime::currentDateTime());
  const QString changes = CConflictWords::Changes(document.Saved(), CPlanDocument::DraftOf(theirs));
  return QStringLiteral("%1 %2").arg(saved, changes).trimmed();
}

void CTarnAddPlanWidget::Private::LoadTheirs() {
  TakeTyped();
  const QString who = CConflictWords::SavedBy(theirs, QDateTime::currentDateTime());
  const int before = document.UndoStack().index();
  const bool was_dirty = document.IsDirty();
  conflict_bar->hide();
  conflict = SaveConflict::None;
  document.TakeOver(std::exchange(theirs, {}));
  opened_pages = document.Draft().pages;
  if (!mine && was_dirty && document.UndoStack().index() != before) {
    mine = before;
  }
  if (!mine) {
    header->FocusName();
    return;
  }
  conflict_bar->ShowTheirs(who + QLatin1Char(' ') + CTarnAddPlanWidget::tr("This is their version."));
  conflict_bar->FocusBack();
}

void CTarnAddPlanWidget::Private::KeepMine() {
  TakeTyped();
  document.AdoptRevision(theirs.revision);
  conflict_bar->hide();
}

// Whatever of theirs was spoken of, a save goes over it now.
void CTarnAddPlanWidget::Private::BackToMine() {
  if (conflict == SaveConflict::ChangedElsewhere) {
    document.AdoptRevision(theirs.revision);
  }
  document.UndoStack().setIndex(mine.value_or(0));
}

// The user may go back by undo as well; then what is newer than theirs is still to be answered.
void CTarnAddPlanWidget::Private::OnUndoStep(int index) {
  if (mine && index <= *mine) {
    mine.reset();
    ShowNews();
  }
}

void CTarnAddPlanWidget::Private::Overwrite() {
  TakeTyped();
  if (!IsRefused(false)) {
    document.AdoptRevision(theirs.revision);
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
  if (conflict == SaveConflict::Deleted) {
    copy_note = QString();
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
  copy_note = note.arg(name);
  saving->SaveAsNew(name, false, Thumbnail());
}

}  // namespace TarnPlanView
