#include <QAction>
#include <QApplication>
#include <QMetaMethod>
#include <QShortcut>
#include <QStyle>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/skin_loader.h"
#include "current_row_keeper.h"
#include "current_skin.h"
#include "group_naming.h"
#include "last_searches.h"
#include "plan_item_role.h"
#include "plan_menu.h"
#include "plan_mover.h"
#include "plan_popups.h"
#include "plan_preview.h"
#include "plan_revealer.h"
#include "plan_rules/names.h"
#include "plan_rules/rights.h"
#include "qt/pattern_validator.h"
#include "row_deletion.h"
#include "search_page.h"
#include "search_plan_list_view.h"
#include "tree_notice.h"
#include "typing_hint.h"
#include "undo_offer.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

// How the panel is put together.
namespace TarnPlanView {

using MarUIControl::CNomalMessage;

using tarn_ui_data_controller::CSkinLoader;

namespace {

constexpr int kSecondsPerPlan = 20;

}  // namespace

void CViewExternWidget::Private::initUi() {
  qRegisterMetaType<std::list<view_plugin_protocol::SearchedPlan>>("std::list<view_plugin_protocol::SearchedPlan>");
  ui.setupUi(q);
  keeper = new CCurrentRowKeeper(ui.plan_view_tree);
  notice = new CTreeNotice(ui.plan_view_tree);
  editor = new CEditorPlace(q);
  deletion = new CRowDeletion(q);
  naming = new CGroupNaming(q);
  popups = new CPlanPopups(q);
  search = new CSearchPage(ui.view_location_line_edit, ui.search_list_view, q);
  last_searches = new CLastSearches(ui.view_location_line_edit);
  mover = new CPlanMover(ui.plan_view_tree, q);
  revealer = new CPlanRevealer(ui.plan_view_tree, q);
  undo = new CUndoOffer(ui.offer_strip, q);
  if (CViewConfigManager::Instance().SupportThumbnail()) {
    preview = new CPlanPreview(ui.plan_view_tree);
  }
  renewal.setSingleShot(true);
  renewal.setInterval(0);
  setUpField();
  bindActions();
  renewSkin();
  waitForLoad();
  restoreEnableState();
}

void CViewExternWidget::Private::setUpField() {
  const auto& switches = CViewConfigManager::Instance();
  auto* field = ui.view_location_line_edit;
  field->setValidator(TarnQt::MakePatternValidator(view_plugin_protocol::TypedNamePattern(), field));
  new CTypingHint(field);
  field->setPlaceholderText(CViewExternWidget::tr("Search plans"));
  field->setAccessibleName(CViewExternWidget::tr("Search plans"));
  ui.search_line_widget->setVisible(switches.IsEnableSearch());
  field->setVisible(switches.IsEnableSearch());
  if (switches.IsLoadAll()) {
    field->SetView(ui.plan_view_tree);
  }
}

void CViewExternWidget::Private::renewSkin() {
  actions->RenewIcons();
  const bool dark = IsCurrentSkinDark();
  CPlanViewTree* tree = ui.plan_view_tree;
  tree->setObjectName(dark ? QStringLiteral("plan_view_tree") : QStringLiteral("plan_view_tree_white"));
  tree->style()->unpolish(tree);  // the style sheets go by the name
  tree->style()->polish(tree);
  notice->RenewPicture();
  search->RenewIcons();
  if (preview) {
    preview->Forget();  // drawn in the colours of the skin
  }
}

void CViewExternWidget::Private::connectSignalAndSlot() {
  connectTree();
  connectEditor();
  connectPopups();
  connectUndo();
  connectSearch();
  connectManager();
  connect(mover, &CPlanMover::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(revealer, &CPlanRevealer::SignalInOtherTree, q, &CViewExternWidget::SignalShowInOtherTree);
  connect(revealer, &CPlanRevealer::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  mover->SetIsEdited(&CEditorPlace::IsEditedAnywhere);
  connect(&renewal, &QTimer::timeout, q, [this] { renewAfterRows(); });
  connect(ui.wait_widget, &CResourceWaitWidget::SignalRetry, q, [this] { reload(); });
  connect(notice, &CTreeNotice::SignalRetry, q, [this] { reload(); });
  connect(&CSkinLoader::Instance(), &CSkinLoader::SignalSkinChanged, q, [this] { renewSkin(); });
  makeShortcuts();
}

void CViewExternWidget::Private::connectTree() {
  CPlanViewTree* tree = ui.plan_view_tree;
  connect(tree, &CPlanViewTree::SignalCurrentIndexChanged, q, &CViewExternWidget::onCurrentIndexChanged);
  connect(tree, &CPlanViewTree::SignalMenuClicked, q, &CViewExternWidget::OnMenuClicked);
  connect(tree, &CPlanViewTree::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(tree, &CPlanViewTree::SignalPlayRequested, q, &CViewExternWidget::onStartPlayView);
  connect(tree, &CPlanViewTree::SignalMenuAboutToShow, q, [this](const QModelIndex& index) {
    renewForRow(index);
    offerForRow();
    Q_EMIT q->SignalRowMenuAboutToShow();
  });
}

void CViewExternWidget::Private::connectEditor() {
  connect(editor, &CEditorPlace::SignalStored, keeper, &CCurrentRowKeeper::OnPlanStored);
  connect(editor, &CEditorPlace::SignalFocusFree, q, [this] { ui.plan_stacked_widget->currentWidget()->setFocus(); });
  connect(editor, &CEditorPlace::SignalChanged, q, [this] { restoreEnableState(); });
  connect(editor, &CEditorPlace::SignalChanged, q, &CViewExternWidget::SignalEditorChanged);
  connect(editor, &CEditorPlace::SignalMayLeave, q, &CViewExternWidget::SignalMayLeave);
  connect(editor, &CEditorPlace::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
}

void CViewExternWidget::Private::connectPopups() {
  connect(deletion, &CRowDeletion::SignalStopPlan, q, &CViewExternWidget::SignalStopPlan);
  connect(naming, &CGroupNaming::SignalNewName, q, &CViewExternWidget::onAddPlanViewGroupName);
  connect(naming, &CGroupNaming::SignalOtherName, q, &CViewExternWidget::onEditPlanViewGroupName);
  connect(naming, &CGroupNaming::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(popups, &CPlanPopups::SignalSavePlanAs, q, &CViewExternWidget::SignalSavePlanAs);
  connect(popups, &CPlanPopups::SignalGroupChosen, mover, [this](const QString& plan_code, const QString& group_code) {
    mover->MoveTo(plan_code, ui.plan_view_tree->RowOf(group_code, true));
  });
  connect(popups, &CPlanPopups::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(popups, &CPlanPopups::SignalCreationInfo, q, &CViewExternWidget::signalSucceedToGetCreationInfo);
  connect(q, &CViewExternWidget::signalSucceedToGetCreationInfo, q, &CViewExternWidget::onSucceedToGetCreationInfo);
}

void CViewExternWidget::Private::connectUndo() {
  connect(deletion, &CRowDeletion::SignalDeleted, q, [this](const DeletedRow& row) { undo->Offer(Deletion(row)); });
  connect(deletion, &CRowDeletion::SignalStillDeleted, q,
          [this](const DeletedRow& row) { undo->OfferAgain(Deletion(row)); });
  connect(deletion, &CRowDeletion::SignalRestored, q, [this](const DeletedRow& row) { onRestored(row); });
  connect(mover, &CPlanMover::SignalMoving, keeper, &CCurrentRowKeeper::OnMoving);
  connect(mover, &CPlanMover::SignalMoved, q, [this](const PlanMove& move) {
    revealMoved(move);
    undo->Offer(Moved(move));
  });
  connect(mover, &CPlanMover::SignalStillMoved, q, [this](const PlanMove& move) { undo->OfferAgain(Moved(move)); });
  connect(mover, &CPlanMover::SignalMovedBack, q, [this](const PlanMove& move) { onMovedBack(move); });
  connect(mover, &CPlanMover::SignalRenamed, q, [this](const QString& name) {
    Q_EMIT q->SignalSaidInMoreWords(CViewExternWidget::tr("Renamed to %1").arg(name));
  });
  connect(mover, &CPlanMover::SignalNotRenamed, naming, &CGroupNaming::KeepPlanName);
  connect(editor, &CEditorPlace::SignalChanged, undo, &CUndoOffer::RenewAction);
  connect(undo, &CUndoOffer::SignalNothing, q, [this] {
    Q_EMIT q->SignalMessageTipNeeded(CViewExternWidget::tr("There is nothing to undo here."), CNomalMessage::Hint);
  });
}

void CViewExternWidget::Private::connectSearch() {
  connectHits();
  connectLastSearches();
  auto* field = ui.view_location_line_edit;
  if (CViewConfigManager::Instance().IsLoadAll()) {
    connect(field, &WidgetKit::CNewSearchLine::SignalSearch, q,
            [this, field] { last_searches->Add(field->text().trimmed()); });
  } else {
    connect(field, &WidgetKit::CNewSearchLine::SignalSearch, q, &CViewExternWidget::OnFuzzySearchPlan);
    field->SetSearchesAsTyped(true);
  }
  connect(field, &WidgetKit::CNewSearchLine::SignalSearch, q, [this] { offerLastSearches(); });
  connect(field, &WidgetKit::CNewSearchLine::SignalToHits, q, [this] { goToHits(); });
  connect(field, &WidgetKit::CNewSearchLine::SignalLeave, q, [this] { endSearch(); });
  auto* edit = new QShortcut(CPanelActions::KeysOf(PlanCommand::Edit), field);
  edit->setContext(Qt::WidgetShortcut);
  connect(edit, &QShortcut::activated, q, [this] { editMarkedHit(); });
  connect(field, &QLineEdit::textChanged, q, [this](const QString& text) {
    if (text.trimmed().isEmpty()) {
      leaveSearch();
    }
  });
  connect(search, &CSearchPage::SignalFound, q, &CViewExternWidget::signalGetSearchedResult);
  connect(search, &CSearchPage::SignalFailed, q,
          [this](const QString& error) { Q_EMIT q->SignalMessageTipNeeded(error, CNomalMessage::Failure); });
  connect(search, &CSearchPage::SignalRetry, q, &CViewExternWidget::OnFuzzySearchPlan);
  connect(q, &CViewExternWidget::signalGetSearchedResult, q, &CViewExternWidget::onGetSearchedResult);
}

void CViewExternWidget::Private::connectHits() {
  using Hits = CSearchPlanListView;
  Hits* hits = ui.search_list_view;
  connect(hits, &Hits::SignalDoubleClicked, q, &CViewExternWidget::onDoubleClicked);
  connect(hits, &Hits::SignalMenuAboutToShow, q, [this](auto* menu) { offerForHit(menu); });
  connect(hits, &Hits::SignalMenuClicked, q, [this](auto type, const QString& code) { onHitCommand(type, code); });
  connect(hits, &Hits::SignalLeave, q, [this] { endSearch(); });
  connect(hits, &Hits::SignalBack, q, [this] { ui.view_location_line_edit->setFocus(); });
  connect(hits, &Hits::SignalShowInTree, q,
          [this](const QString& code) { run(PlanCommand::ShowInTree, PanelPage::Search, code); });
  connect(hits->selectionModel(), &QItemSelectionModel::currentChanged, q, [this] {
    askRights();
    restoreEnableState();
  });
}

// A text counts once the user has asked for it, or has used what it found.
void CViewExternWidget::Private::connectLastSearches() {
  using Hits = CSearchPlanListView;
  const auto add = [this] { last_searches->Add(search->Marked().data(SearchTextRole).toString()); };
  connect(ui.search_list_view, &Hits::SignalDoubleClicked, q, add);
  connect(ui.search_list_view, &Hits::SignalMenuClicked, q, add);
  connect(ui.search_list_view, &Hits::SignalShowInTree, q, add);
  connect(last_searches, &CLastSearches::SignalChanged, q, &CViewExternWidget::SignalLastSearchesChanged);
  connect(last_searches, &CLastSearches::SignalChosen, q, [this](const QString& text) {
    ui.view_location_line_edit->setText(text);
    ui.view_location_line_edit->setFocus();
    if (CViewConfigManager::Instance().IsLoadAll()) {
      last_searches->Add(text);  // the field has begun to look by itself
    } else {
      q->OnFuzzySearchPlan();
    }
  });
}

void CViewExternWidget::Private::connectManager() {
  using Manager = CViewModelDataManager;
  auto* manager = &Manager::Instance();
  connect(manager, &Manager::SignalDataDownloadFinished, q, &CViewExternWidget::OnDownloadResouceFinished);
  connect(manager, &Manager::SignalPlanStateChanged, q, &CViewExternWidget::SignalPlanStateChanged);
  connect(manager, &Manager::SignalUpdatePlanSucc, keeper,
          [this](const auto& plan) { keeper->OnPlanUpdated(MarUIControl::StringToQString(plan.plan_index_code)); });
  if (preview) {
    connect(manager, &Manager::SignalPlanStateChanged, preview, &CPlanPreview::Forget);
  }
}

// Those of the tree are watched before the tree itself hears of them.
void CViewExternWidget::Private::watchRows() {
  keeper->Watch(proxy);
  ui.plan_view_tree->SetFilterSortModel(proxy);
  ui.plan_view_tree->SetShowRightHoverDelgete();
  const auto renew = [this] { scheduleRenewal(); };
  connect(proxy, &QAbstractItemModel::rowsInserted, q, renew);
  connect(proxy, &QAbstractItemModel::rowsRemoved, q, renew);
  connect(proxy, &QAbstractItemModel::dataChanged, q, renew);
  connect(proxy, &QAbstractItemModel::modelReset, q, renew);
}

void CViewExternWidget::Private::makeShortcuts() {
  using Act = void (*)(Private&);
  // With several panels in sight the keys belong to the one that has the focus.
  const auto add = [this](PlanCommand command, Act act) {
    auto* shortcut = new QShortcut(CPanelActions::KeysOf(command), q);
    const auto run = [this, act] { act(*PanelForKeys()->d_); };
    connect(shortcut, &QShortcut::activated, q, run);
    connect(shortcut, &QShortcut::activatedAmbiguously, q, run);
  };
  add(PlanCommand::Search, [](Private& panel) { panel.beginSearch(); });
  add(PlanCommand::AddPlan, [](Private& panel) { panel.run(PlanCommand::AddPlan, panel.CurrentPage()); });
  add(PlanCommand::AddGroup, [](Private& panel) { panel.run(PlanCommand::AddGroup, panel.CurrentPage()); });
}

CViewExternWidget* CViewExternWidget::Private::PanelForKeys() const {
  for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
    if (auto* panel = qobject_cast<CViewExternWidget*>(widget)) {
      return panel;
    }
  }
  return q;
}

// --- Commands -------------------------------------------------------------------------------------------------------

void CViewExternWidget::Private::bindActions() {
  actions = new CPanelActions(q);
  const struct {
    PlanCommand command;
    QToolButton* button;
    void (CViewExternWidget::*slot)();
  } bar[] = {
      {PlanCommand::AddGroup, ui.add_group_btn, &CViewExternWidget::onAddGroupBtnClicked},
      {PlanCommand::AddPlan, ui.add_view_btn, &CViewExternWidget::onAddPlanBtnClicked},
      {PlanCommand::Edit, ui.edit_btn, &CViewExternWidget::onEditBtnClicked},
      {PlanCommand::Delete, ui.delete_btn, &CViewExternWidget::onDeleteBtnClicked},
      {PlanCommand::Search, ui.search_btn, &CViewExternWidget::OnSearchBtnClicked},
  };
  for (const auto& one : bar) {
    actions->Bind(one.command, one.button);
    connect(actions->Of(one.command), &QAction::triggered, q, one.slot);
  }
  const auto about = [this](PlanCommand command, auto act) {
    QAction* action = actions->Of(command);
    connect(action, &QAction::triggered, q, [action, act] { act(action->data().toString()); });
  };
  about(PlanCommand::Play, [this](const QString& code) { play(code); });
  about(PlanCommand::Share, [this](const QString& code) { SetViewShareShow(code); });
  about(PlanCommand::ShowInTree, [this](const QString& code) { showInTree(code, search->MarkedFamily()); });
  about(PlanCommand::CreationInfo, [this](const QString& code) {
    if (!stopped) {
      popups->RequestCreationInfo(code);
    }
  });
  about(PlanCommand::Cycle, [this](const QString& code) { Q_EMIT q->SignalPlanGroupCycle(code, kSecondsPerPlan); });
  connect(actions, &CPanelActions::SignalRefused, q,
          [this](const QString& reason) { Q_EMIT q->SignalMessageTipNeeded(reason, CNomalMessage::Hint); });
}

void CViewExternWidget::Private::offerForRow() {
  auto& menu = *ui.plan_view_tree->GetViewMoreMenu();
  EnableEntries(menu, States());
  for (const auto type : {tarn_ui_data_controller::Edit, tarn_ui_data_controller::Delete}) {
    const QAction* action = actions->Of(*CommandOf(type));  // with a button, whose words the entry has
    menu.SetMenuItemEnabled(type, action->isEnabled(), action->toolTip());
  }
}

PanelSituation CViewExternWidget::Private::SituationOn(PanelPage page) const {
  PanelSituation situation = known;
  situation.switches = CViewConfigManager::Instance().Host();
  situation.page = page;
  situation.editing = editor->IsOpen();
  situation.loading = ui.wait_widget->IsWaiting();
  if (page == PanelPage::Search) {
    situation.item_type = search->MarkedType();
    const bool is_own_family = model && search->MarkedFamily() == model->GetViewManagerThemeNodeType();
    const auto other_tree = QMetaMethod::fromSignal(&CViewExternWidget::SignalShowInOtherTree);
    situation.in_no_tree = !is_own_family && !q->isSignalConnected(other_tree);
  } else {
    situation.item_type = Current().data(ItemTypeRole).toInt();
  }
  return situation;
}

void CViewExternWidget::Private::storeEnableState(const QModelIndex& row) {
  const bool under_root = CViewConfigManager::Instance().CreatePlanUnderRootNode();
  known.grants = GrantsAfter(known.grants, row.data(ItemTypeRole).toInt(), known.rights, under_root);
}

void CViewExternWidget::Private::restoreEnableState() {
  actions->Show(States());
}

void CViewExternWidget::Private::askRights() {
  using namespace view_plugin_protocol;
  known.rights = view_plugin_protocol::Rights::OfCurrentUser();
}

void CViewExternWidget::Private::renewForRow(const QModelIndex& row) {
  if (!known.between_users) {
    askRights();
    storeEnableState(row);
    restoreEnableState();
  }
}

void CViewExternWidget::onCurrentIndexChanged(const QModelIndex& current, const QModelIndex& previous) {
  d_->keeper->OnCurrentChanged(current, previous);
  if (!current.isValid()) {
    return;
  }
  d_->renewForRow(current);
  using view_plugin_protocol::EditRight;
  const int family = CViewPublicDef::GetIndexType(current);
  d_->ui.plan_view_tree->SetMovePermission(MayChange(family, EditRight, d_->known.rights));
}

}  // namespace TarnPlanView
