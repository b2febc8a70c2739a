#include <QAction>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "creation_info_dlg.h"
#include "current_row_keeper.h"
#include "deletion_texts.h"
#include "group_naming.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_log.h"
#include "plan_mover.h"
#include "plan_popups.h"
#include "plan_revealer.h"
#include "plan_rows.h"
#include "plan_rules/families.h"
#include "row_deletion.h"
#include "row_move_check.h"
#include "search_page.h"
#include "search_plan_list_view.h"
#include "tarn_add_plan_widget.h"
#include "undo_offer.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"

// What the commands of the panel do.
namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

constexpr int kUndoMoveSeconds = 10;

struct NewPlanGroup {
  QString code, name;
  int family = view_plugin_protocol::PublicFamily;
};

}  // namespace

QString CViewExternWidget::Private::MonitorId() const {
  return model ? model->GetViewManagerMonitorId() : monitor_id;
}

// --- Play and delete ------------------------------------------------------------------------------------------------

void CViewExternWidget::Private::play(const QString& code) {
  if (!controller || code.isEmpty() || stopped) {
    return;
  }
  const QPointer<CViewExternWidget> alive(q);
  if (!monitor_id.isEmpty()) {
    Q_EMIT q->SignalPlayPlanToMonitor(
        QVariantMap{{QStringLiteral("monitor_id"), monitor_id}, {QStringLiteral("plan_code"), code}});
  }
  if (alive && controller) {
    controller->PlayPlanViewByIndexCode(QStringToString(code));
  }
}

void CViewExternWidget::PlayPlanByIndex(const QModelIndex& index) {
  d_->play(index.data(PlanIndexCodeRole).toString());
}

void CViewExternWidget::PlayPlanByString(const QString& index_code, const bool& automatic) {
  Q_UNUSED(automatic)  // who plays records how the play came about
  d_->play(index_code);
}

void CViewExternWidget::PlayPlanFromHistory(const std::string& index_code) {
  d_->play(StringToQString(index_code));
}

void CViewExternWidget::OnPlayPlanByString(const QString& index_code, int window) {
  Q_UNUSED(window)  // a plan fills the monitor, whatever window it was asked for in
  d_->play(index_code);
}

void CViewExternWidget::onStartPlayView(const QModelIndex& index) {
  PlayPlanByIndex(index);
}

void CViewExternWidget::onStartPlayViewByString(const QString& index_code, const bool& automatic) {
  PlayPlanByString(index_code, automatic);
}

void CViewExternWidget::onStartPlayViewByString(const QString& index_code, int window) {
  OnPlayPlanByString(index_code, window);
}

void CViewExternWidget::onDeleteBtnClicked() {
  if (d_->IsReady() && d_->CurrentPage() != PanelPage::Wait) {
    d_->deletion->Delete(d_->Current());
  }
}

// --- Undo -----------------------------------------------------------------------------------------------------------

Undoable CViewExternWidget::Private::Deletion(const DeletedRow& row) {
  return {row.notice, row.restorable_seconds, [this, row] { deletion->Undo(row); }};
}

// The rows have changed, and with them hits or where these stand.
void CViewExternWidget::Private::repeatSearch() {
  if (CurrentPage() == PanelPage::Search) {
    search->Repeat();
  }
}

void CViewExternWidget::Private::onMovedBack(const PlanMove& move) {
  revealMoved(move);
  const QStringList names{move.name, StringToQString(move.to.name)};
  Q_EMIT q->SignalSaidInMoreWords(FillPlaces(CViewExternWidget::tr("Moved %1 back to %2."), names));
}

Undoable CViewExternWidget::Private::Moved(const PlanMove& move) {
  const QStringList names{move.name, StringToQString(move.to.name)};
  return {FillPlaces(CViewExternWidget::tr("Moved %1 to %2."), names), kUndoMoveSeconds,
          [this, move] { mover->Undo(move); }};
}

void CViewExternWidget::Private::onRestored(const DeletedRow& row) {
  if (!keeper->Reveal(row.code, row.is_group, row.parent_code)) {
    revealer->Reveal(row.code, row.is_group);
  }
  repeatSearch();
  if (model) {  // rows that come in once more know of no plan that plays
    CViewModelDataManager::Instance().SetPlanPlayStateByIndexCode(MonitorId(), model->GetPlayingIndexCode(), true);
  }
  const QPointer<CViewExternWidget> alive(q);
  Q_EMIT q->SignalMessageTipNeeded(FillPlaces(CViewExternWidget::tr("\"%1\" is back."), {row.name}),
                                   CNomalMessage::Success);
  if (alive && !row.is_group) {
    Q_EMIT q->SignalPlanRestored(row.code);
  }
}

// A search that was begun meanwhile goes on.
void CViewExternWidget::Private::revealMoved(const PlanMove& move) {
  keeper->RevealMoved(move.plan_code, StringToQString(move.to.code));
  repeatSearch();
}

void CViewExternWidget::Private::finishExpand(const QModelIndex& index, bool expand) {
  CPlanViewTree* tree = ui.plan_view_tree;
  QModelIndex row = index;
  if (model && index.model() == model) {
    row = proxy->mapFromSource(index);
  }
  tree->OnFinishAnsyFilterExpandedTree(row, expand && tree->IsWaiting(row));
}

// --- Groups ---------------------------------------------------------------------------------------------------------

QModelIndex CViewExternWidget::Private::GroupForNew() const {
  const QModelIndex row = Current();
  if (IsPlanRow(row)) {
    return row.parent();
  }
  return row;
}

// Hits of a search have no row for it, so the search ends there.
void CViewExternWidget::Private::revealNew(const QString& group_code, const QString& parent_code) {
  if (CurrentPage() == PanelPage::Search) {
    endSearch();
  }
  keeper->Reveal(group_code, true, parent_code);
}

void CViewExternWidget::onAddGroupBtnClicked() {
  if (d_->IsReady()) {
    d_->naming->AskForNew(d_->GroupForNew(), CGroupNaming::PlaceBelow(d_->ui.add_group_btn));
  }
}

void CViewExternWidget::onAddPlanViewGroupName(const QString& name) {
  QModelIndex parent = d_->GroupForNew();
  if (!parent.isValid() && d_->proxy) {
    parent = d_->proxy->index(0, 0);  // nothing chosen: below the root
  }
  const auto added = [panel = QPointer<CViewExternWidget>(this), from = QPersistentModelIndex(d_->Current())](
                         const QString& code, const QString& parent_code) {
    const bool has_stayed = panel && from == panel->d_->Current();
    if (has_stayed) {
      panel->d_->revealNew(code, parent_code);
    }
  };
  d_->naming->Add(d_->IsReady() ? d_->controller.data() : nullptr, name, parent, added);
}

void CViewExternWidget::onEditPlanViewGroupName(const QString& name) {
  if (!d_->IsReady()) {
    return;
  }
  const QString plan_code = d_->naming->RenamedPlan();
  if (plan_code.isEmpty()) {
    d_->naming->Rename(*d_->controller, name, d_->Current());
  } else {
    d_->mover->Rename(plan_code, name);
  }
}

Refusal CViewExternWidget::Private::WhyNothingNewAt(const view_plugin_protocol::TarnPlanViewInfo& row,
                                                    PlanCommand command) const {
  const bool is_root = row.is_group && view_plugin_protocol::IsRootCode(StringToQString(row.index_code).toInt());
  PanelSituation situation = SituationOn(PanelPage::Tree);
  situation.item_type = ItemTypeIn(row.type, is_root, row.is_group);
  situation.rights = view_plugin_protocol::Rights::OfCurrentUser();
  return WhyNothingNew(command, situation, CViewConfigManager::Instance().CreatePlanUnderRootNode());
}

QString CViewExternWidget::WhyNoNewPlan(const view_plugin_protocol::TarnPlanViewInfo& row) const {
  return TextOf(d_->WhyNothingNewAt(row, PlanCommand::AddPlan));
}

QString CViewExternWidget::WhyNoNewGroup(const view_plugin_protocol::TarnPlanViewInfo& row) const {
  const Refusal refusal = d_->WhyNothingNewAt(row, PlanCommand::AddGroup);
  const QString group = StringToQString(row.is_group ? row.index_code : row.group_index_code);
  if (refusal == Refusal::None && CGroupNaming::IsTooDeep(d_->ui.plan_view_tree->RowOf(group, true))) {
    return tr("Groups cannot be nested deeper than this.");
  }
  return TextOf(refusal);
}

void CViewExternWidget::AddGroupTo(const QString& group_code) {
  if (!d_->IsReady()) {
    return;
  }
  const QModelIndex group = d_->ui.plan_view_tree->RowOf(group_code, true);
  if (group.isValid()) {
    d_->askForNewIn(group);
  } else {
    d_->revealer->Reveal(group_code, true, [d = d_.get()](const QModelIndex& row) { d->askForNewIn(row); });
  }
}

void CViewExternWidget::Private::askForNewIn(const QModelIndex& group) {
  naming->AskForNew(group, placeAtCommandRow(ui.add_group_btn));
}

void CViewExternWidget::RenameRow(const view_plugin_protocol::TarnPlanViewInfo& row) {
  const QString code = StringToQString(row.index_code);
  if (!d_->IsReady()) {
    return;
  }
  if (!row.is_group) {
    d_->naming->AskForPlanName(code, StringToQString(row.name), d_->placeAtCommandRow(d_->ui.edit_btn));
    return;
  }
  const QModelIndex group = d_->ui.plan_view_tree->RowOf(code, true);
  if (group.isValid()) {
    d_->naming->AskForRename(group, d_->placeAtCommandRow(d_->ui.edit_btn));
  }
}

QPoint CViewExternWidget::Private::placeAtCommandRow(const QWidget* button) const {
  const std::pair<PanelPage, QAbstractItemView*> pages[] = {{PanelPage::Tree, ui.plan_view_tree},
                                                            {PanelPage::Search, ui.search_list_view}};
  for (const auto& [page, rows] : pages) {
    if (page == CurrentPage() && rows->currentIndex().isValid()) {
      rows->scrollTo(rows->currentIndex());
      const QRect row = rows->visualRect(rows->currentIndex());
      return rows->viewport()->mapToGlobal(row.bottomLeft() + QPoint(0, 1));
    }
  }
  return CGroupNaming::PlaceBelow(button);
}

// --- Plans ----------------------------------------------------------------------------------------------------------

QString CViewExternWidget::Private::GroupForNewPlan() const {
  if (CurrentPage() != PanelPage::Search) {
    return GroupForNew().data(GroupIndexCodeRole).toString();
  }
  const QString code = search->Marked().data(kSearchGroupRole).toString();
  return ui.plan_view_tree->RowOf(code, true).data(GroupIndexCodeRole).toString();
}

void CViewExternWidget::onAddPlanBtnClicked() {
  TARN_PLAN_LOG_INFO("Add plan button clicked");
  if (d_->IsReady()) {
    d_->openNewPlan(d_->GroupForNewPlan());
  }
}

void CViewExternWidget::AddPlanTo(const QString& group_code) {
  if (d_->IsReady()) {
    d_->openNewPlan(group_code);
  }
}

void CViewExternWidget::Private::openNewPlan(const QString& group_code) {
  const QPointer<CViewExternWidget> alive(q);
  const bool had_focus = ui.add_view_btn->hasFocus();
  known.opening = true;
  restoreEnableState();
  // A group that is not loaded here is known from the hit that stands in it.
  const QModelIndex hit = search->Marked();
  NewPlanGroup group;
  group.code = group_code;
  if (hit.isValid() && hit.data(kSearchGroupRole).toString() == group_code) {
    group.name = hit.data(kSearchPathRole).toStringList().constLast();
    group.family = hit.data(PlanTypeRole).toInt();
  }
  const bool opened =
      editor->Open([group](CTarnAddPlanWidget* widget) { widget->OpenNew(group.code, group.name, group.family); });
  if (!alive) {
    return;
  }
  if (opened) {
    TARN_PLAN_LOG_INFO("Add plan dock widget show.");
  }
  known.opening = false;
  restoreEnableState();
  if (had_focus && !opened) {
    ui.add_view_btn->setFocus();  // disabling has moved it on
  }
}

void CViewExternWidget::MovePlan(const view_plugin_protocol::TarnPlanViewInfo& plan) {
  if (d_->IsReady()) {
    d_->popups->ShowMoveTo(plan, d_->model, d_->controller);
  }
}

void CViewExternWidget::onEditBtnClicked() {
  if (!d_->IsReady()) {
    return;
  }
  if (d_->CurrentPage() == PanelPage::Search) {
    d_->run(PlanCommand::Edit, PanelPage::Search, d_->search->Marked().data(PlanIndexCodeRole).toString());
  } else {
    d_->editRow(d_->Current());
  }
}

void CViewExternWidget::Private::editMarkedHit() {
  const QString code = search->Marked().data(PlanIndexCodeRole).toString();
  if (CurrentPage() == PanelPage::Search && !code.isEmpty()) {
    onHitCommand(tarn_ui_data_controller::Edit, code);
  } else if (CurrentPage() == PanelPage::Tree && ui.view_location_line_edit->HitCount() > 0) {
    run(PlanCommand::Edit, PanelPage::Tree);
  }
}

void CViewExternWidget::Private::editRow(const QModelIndex& row) {
  if (!IsReady() || !row.isValid() || CurrentPage() == PanelPage::Wait) {
    return;
  }
  if (row.data(IsGroupRole).toBool()) {
    naming->AskForRename(row, CGroupNaming::PlaceBelow(ui.edit_btn));
  } else {
    editPlan(row.data(PlanIndexCodeRole).toString());
  }
}

void CViewExternWidget::Private::editPlan(const QString& code) {
  editor->Open([code](CTarnAddPlanWidget* widget) { widget->OpenPlan(code); });
}

// --- Menu -----------------------------------------------------------------------------------------------------------

// The row may have vanished under the open menu, and another one become current. No code means the current row.
bool CViewExternWidget::Private::isCurrent(const QString& code) const {
  return code.isEmpty() || CodeOfRow(Current()) == code;
}

bool CViewExternWidget::Private::isThere(PlanCommand command, const QString& code) const {
  switch (command) {
    case PlanCommand::Play:
      return ui.plan_view_tree->RowOf(code, false).isValid();
    case PlanCommand::Cycle:
      return ui.plan_view_tree->RowOf(code, true).isValid();
    case PlanCommand::CreationInfo:
      return true;
    default:
      return isCurrent(code);
  }
}

void CViewExternWidget::OnMenuClicked(tarn_ui_data_controller::MsgType type, QVariant menu_data) {
  const std::optional<PlanCommand> command = CommandOf(type);
  const QString code = menu_data.toString();
  if (!command || !d_->isThere(*command, code)) {
    return;
  }
  PanelPage page = d_->CurrentPage();
  if (command == PlanCommand::Edit && page == PanelPage::Search) {
    page = PanelPage::Tree;  // the row is meant, and not a hit that has come over it
  }
  d_->run(*command, page, code);
}

void CViewExternWidget::Private::run(PlanCommand command, PanelPage page, const QString& code) {
  if (command == PlanCommand::Share) {
    askRights();  // the other commands go by what the row or the hit was shown with
  }
  const CommandState state = StatesOf(SituationOn(page))[command];
  if (command != PlanCommand::Edit || !state.enabled) {
    actions->Run(command, state, code);
  } else if (page == PanelPage::Search) {
    editPlan(code);
  } else {
    editRow(Current());
  }
}

void CViewExternWidget::OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect) {
  switch (CheckRowMove(*d_->ui.plan_view_tree, start, end, targetRect)) {
    case RowMoveRefusal::SameGroup:
      Q_EMIT SignalMessageTipNeeded(tr("ViewSortFailedadOMakQWZCpToC"), CNomalMessage::Success);
      break;
    case RowMoveRefusal::OtherGroup:
      Q_EMIT SignalMessageTipNeeded(tr("TheMoveViewOperationrvQbjaeS"), CNomalMessage::Success);
      break;
    case RowMoveRefusal::None:
      break;
  }
}

// --- Pop-ups about a plan -------------------------------------------------------------------------------------------

void CViewExternWidget::onSucceedToGetCreationInfo(const QString& creator, const QString& creation_time) {
  d_->popups->ShowCreationInfo(creator, creation_time);
}

void CViewExternWidget::Private::SetViewShareShow(const QString& plan_code) {
  std::optional<QString> chosen;
  if (Current().isValid() || !plan_code.isEmpty()) {
    chosen = plan_code;
  }
  popups->ShowShare(chosen);
}

void CViewExternWidget::OnPopupSavePlanAsDlg(const QPoint& position) {
  if (!d_->stopped) {
    d_->popups->ShowSaveAs(position, d_->MonitorId(), d_->controller);
  }
}

QList<QAction*> CViewExternWidget::NewBarEntries(QObject* parent) {
  QList<QAction*> entries;
  for (const auto command :
       {PlanCommand::AddPlan, PlanCommand::AddGroup, PlanCommand::Edit, PlanCommand::Delete, PlanCommand::Search}) {
    const QAction* action = d_->actions->Of(command);
    auto* entry = new QAction(action->icon(), action->text(), parent);
    entry->setToolTip(action->toolTip());
    entry->setEnabled(action->isEnabled());
    entry->setVisible(action->isVisible());
    entry->setShortcut(CPanelActions::KeysOf(command));
    entry->setShortcutVisibleInContextMenu(true);
    connect(entry, &QAction::triggered, this, [this, command] { d_->actions->Of(command)->trigger(); });
    entries << entry;
  }
  return entries << d_->newRowEntry(tarn_ui_data_controller::Share, parent)
                 << d_->newRowEntry(tarn_ui_data_controller::GroupCycle, parent);
}

// In the words of the row's own menu.
QAction* CViewExternWidget::Private::newRowEntry(tarn_ui_data_controller::MsgType type, QObject* parent) {
  const PlanCommand command = *CommandOf(type);
  const CommandState state = States()[command];
  const QAction* in_menu = ui.plan_view_tree->GetViewMoreMenu()->MenuItem(type);
  auto* entry = new QAction(parent);
  entry->setVisible(in_menu && state.shown);
  entry->setEnabled(state.enabled);
  if (in_menu) {
    entry->setText(in_menu->text());
  }
  if (!state.enabled) {
    entry->setToolTip(TextOf(state.reason));
  }
  QString code = CodeOfRow(Current());
  if (CurrentPage() == PanelPage::Search) {
    code = search->Marked().data(PlanIndexCodeRole).toString();
  }
  connect(entry, &QAction::triggered, q, [this, command, code] { run(command, CurrentPage(), code); });
  return entry;
}

void CViewExternWidget::Private::closePopups() {
  editor->Close();
  popups->Close();
  naming->Close();
}

}  // namespace TarnPlanView
