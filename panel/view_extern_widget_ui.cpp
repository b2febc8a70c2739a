#include <QApplication>
#include <QRegExpValidator>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/dock_widget.h"
#include "plan_commands.h"
#include "plan_item_role.h"
#include "plan_menu.h"
#include "plan_rules/rights.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

using tarn_ui_data_controller::CSkinLoader;

namespace {

constexpr int kSecondsPerPlan = 20;
constexpr char kNamePattern[] = "^[^\\\\/:*?\"<|'%>]{1,256}$";
}  // namespace

void CViewExternWidget::Private::initUi() {
  qRegisterMetaType<std::list<view_plugin_protocol::SearchedPlan>>("std::list<view_plugin_protocol::SearchedPlan>");
  ui.setupUi(q);
  const auto& switches = CViewConfigManager::Instance();
  auto* field = ui.view_location_line_edit;
  field->setValidator(new QRegExpValidator(QRegExp(QString::fromLatin1(kNamePattern)), field));
  field->setPlaceholderText(CViewExternWidget::tr("Search plans"));
  field->setAccessibleName(CViewExternWidget::tr("Search plans"));
  ui.search_line_widget->setVisible(switches.IsEnableSearch());
  field->setVisible(switches.IsEnableSearch());
  bindActions();
  search_model = new QStandardItemModel(q);
  ui.search_list_view->setModel(search_model);
  ui.search_list_view->setAccessibleName(CViewExternWidget::tr("Plans found"));
  tree_state = new CEmptyState(ui.plan_view_tree->viewport());
  search_state = new CEmptyState(ui.search_list_view->viewport());
  mover = new CPlanMover(ui.plan_view_tree, q);
  search = new CPlanSearch(q);
  if (switches.SupportThumbnail()) {
    preview = new CPlanPreview(ui.plan_view_tree);
  }
  if (switches.IsLoadAll()) {
    field->SetView(ui.plan_view_tree);
  }
  renewal.setSingleShot(true);
  renewal.setInterval(0);
  renewSkin();
  waitForLoad();
  restoreEnableState();
}

void CViewExternWidget::Private::renewSkin() {
  actions->RenewIcons();
  const bool dark = CViewConfigManager::Instance().IsDarkSkin();
  CPlanViewTree* tree = ui.plan_view_tree;
  tree->setObjectName(dark ? QStringLiteral("plan_view_tree") : QStringLiteral("plan_view_tree_white"));
  tree->style()->unpolish(tree);  // the style sheets go by the name
  tree->style()->polish(tree);
  tree_state->RenewPicture();
  search_state->RenewPicture();
  renewSearchIcons();
}

void CViewExternWidget::Private::connectSignalAndSlot() {
  CPlanViewTree* tree = ui.plan_view_tree;
  connect(tree, &CPlanViewTree::SignalCurrentIndexChanged, q, &CViewExternWidget::onCurrentIndexChanged);
  connect(tree, &CPlanViewTree::SignalMenuClicked, q, &CViewExternWidget::OnMenuClicked);
  connect(tree, &CPlanViewTree::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(tree, &CPlanViewTree::SignalPlayRequested, q, &CViewExternWidget::onStartPlayView);
  connect(tree, &CPlanViewTree::SignalMenuAboutToShow, q, [this](const QModelIndex& index) {
    renewForRow(index);
    EnableEntries(*ui.plan_view_tree->GetViewMoreMenu(), States());
  });
  connect(mover, &CPlanMover::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(mover, &CPlanMover::SignalMoved, q, &CViewExternWidget::SetCurPlanByIndexCode);
  mover->SetIsEdited(&Private::isEditedAnywhere);

  connect(ui.search_list_view, &CSearchPlanListView::SignalDoubleClicked, q, &CViewExternWidget::onDoubleClicked);
  connect(ui.search_list_view, &CSearchPlanListView::SignalMenuAboutToShow, q,
          [this](auto* menu) { offerForHit(menu); });
  connect(ui.search_list_view, &CSearchPlanListView::SignalMenuClicked, q,
          [this](auto type, const QString& code) { onHitCommand(type, code); });
  connect(ui.search_list_view->selectionModel(), &QItemSelectionModel::currentChanged, q, [this] { renewRights(); });
  connect(ui.search_list_view, &CSearchPlanListView::SignalLeave, q, [this] {
    ui.view_location_line_edit->clear();
    leaveSearch();
    ui.plan_view_tree->setFocus();
  });
  auto* field = ui.view_location_line_edit;
  if (!CViewConfigManager::Instance().IsLoadAll()) {
    connect(field, &WidgetKit::CNewSearchLine::SignalSearch, q, &CViewExternWidget::OnFuzzySearchPlan);
  }
  connect(field, &QLineEdit::textChanged, q, [this](const QString& text) {
    if (text.trimmed().isEmpty()) {
      leaveSearch();
    }
  });
  connect(field, &WidgetKit::CNewSearchLine::SignalLeave, q, [this] {
    leaveSearch();
    ui.plan_view_tree->setFocus();
  });
  connect(search, &CPlanSearch::SignalFound, q, [this](const auto& plans) {
    const QPointer<CViewExternWidget> alive(q);
    answered_text = std::exchange(searched_text, {});
    Q_EMIT q->signalGetSearchedResult(plans);
    if (alive) {
      answered_text.clear();
    }
  });
  connect(search, &CPlanSearch::SignalFailed, q, [this](const QString& error) {
    search_failed = true;
    Q_EMIT q->SignalMessageTipNeeded(error, 1);
  });
  connect(search_state, &CEmptyState::SignalAction, q, &CViewExternWidget::OnFuzzySearchPlan);
  connect(&renewal, &QTimer::timeout, q, [this] { renewAfterRows(); });
  connect(q, &CViewExternWidget::signalGetSearchedResult, q, &CViewExternWidget::onGetSearchedResult);
  connect(q, &CViewExternWidget::signalSucceedToGetCreationInfo, q, &CViewExternWidget::onSucceedToGetCreationInfo);

  auto* manager = &CViewModelDataManager::Instance();
  connect(manager, &CViewModelDataManager::SignalDataDownloadFinished, q,
          &CViewExternWidget::OnDownloadResouceFinished);
  connect(manager, &CViewModelDataManager::SignalPlanStateChanged, q, &CViewExternWidget::SignalPlanStateChanged);
  connect(manager, &CViewModelDataManager::SignalUpdatePlanSucc, q,
          [this](const auto& plan) { followUpdated(MarUIControl::StringToQString(plan.plan_index_code)); });
  if (preview) {
    connect(manager, &CViewModelDataManager::SignalPlanStateChanged, preview, &CPlanPreview::Forget);
  }
  connect(ui.wait_widget, &CResourceWaitWidget::SignalRetry, q, [this] { reload(); });
  connect(tree_state, &CEmptyState::SignalAction, q, [this] { reload(); });
  connect(&CSkinLoader::Instance(), &CSkinLoader::SignalSkinChanged, q, [this] { renewSkin(); });
  makeShortcuts();
}

void CViewExternWidget::Private::makeShortcuts() {
  using Action = void (*)(Private&);
  // With several panels in sight the keys belong to the one that has the focus.
  const auto add = [this](const QKeySequence& keys, Action action) {
    auto* shortcut = new QShortcut(keys, q);
    const auto act = [this, action] { action(*PanelForKeys()->d_); };
    QObject::connect(shortcut, &QShortcut::activated, q, act);
    QObject::connect(shortcut, &QShortcut::activatedAmbiguously, q, act);
  };
  add(QKeySequence::Find, [](Private& panel) { panel.beginSearch(); });
  add(QKeySequence::New, [](Private& panel) { panel.actions->Run(PlanCommand::AddPlan); });
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
      [](Private& panel) { panel.actions->Run(PlanCommand::AddGroup); });
}

CViewExternWidget* CViewExternWidget::Private::PanelForKeys() const {
  for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
    if (auto* panel = qobject_cast<CViewExternWidget*>(widget)) {
      return panel;
    }
  }
  return q;
}

void CViewExternWidget::Private::beginSearch() {
  if (!States()[PlanCommand::Search].shown) {
    return;
  }
  ui.view_location_line_edit->show();
  ui.search_line_widget->show();
  ui.view_location_line_edit->setFocus(Qt::ShortcutFocusReason);
  ui.view_location_line_edit->selectAll();
}

PanelPage CViewExternWidget::Private::CurrentPage() const {
  const QWidget* page = ui.plan_stacked_widget->currentWidget();
  if (page == ui.search_list_view) {
    return PanelPage::Search;
  }
  return page == ui.wait_widget ? PanelPage::Wait : PanelPage::Tree;
}

void CViewExternWidget::Private::ShowPage(PanelPage page) {
  QWidget* const pages[] = {ui.plan_view_tree, ui.search_list_view, ui.wait_widget};
  ui.plan_stacked_widget->setCurrentWidget(pages[static_cast<int>(page)]);
  if (preview) {
    preview->Dismiss();
  }
}

void CViewExternWidget::Private::waitForLoad() {
  search->Cancel();
  load_failed = false;
  ShowPage(PanelPage::Wait);
  ui.wait_widget->SetWaiting(true);
}

void CViewExternWidget::Private::reload() {
  if (stopped) {
    return;
  }
  waitForLoad();
  CViewModelDataManager::Instance().OnUpdateViewModelData();
}

void CViewExternWidget::Private::leaveSearch() {
  search->Cancel();
  searched_text.clear();
  if (CurrentPage() == PanelPage::Search) {
    ShowPage(PageBehindSearch());
  }
  restoreEnableState();
  scheduleRenewal();
}

PanelPage CViewExternWidget::Private::PageBehindSearch() const {
  return ui.wait_widget->IsWaiting() ? PanelPage::Wait : PanelPage::Tree;
}

void CViewExternWidget::Private::scheduleRenewal() {
  if (!renewal.isActive() && !stopped) {
    renewal.start();
  }
}

void CViewExternWidget::Private::renewAfterRows() {
  if (stopped || !proxy) {
    return;
  }
  const QModelIndex before = row_before_load ? QModelIndex(row_before_load->Resolve()) : QModelIndex();
  if (before.isValid()) {
    row_before_load.reset();
    ui.plan_view_tree->setCurrentIndex(before);
  }
  showAwaited();
  renewEmptyState();
}

// The load has come to its end, and with it the time to say whether it brought anything.
void CViewExternWidget::Private::onLoadChecked() {
  if (stopped || !proxy || CurrentPage() == PanelPage::Wait) {
    return;
  }
  load_failed = proxy->rowCount() == 0;
  renewAfterRows();
  if (!Current().isValid() && proxy->rowCount() > 0) {
    ui.plan_view_tree->setCurrentIndex(proxy->index(0, 0));
  }
}

// What the tree says when there is nothing in it: that nothing could be loaded, or that nothing is there yet.
void CViewExternWidget::Private::renewEmptyState() {
  if (!proxy || CurrentPage() != PanelPage::Tree || stopped) {
    return;
  }
  const int roots = proxy->rowCount();
  if (roots == 0 && !load_failed) {
    if (!CViewModelDataManager::Instance().IsViewModelInitFinish()) {
      waitForLoad();  // everything is being loaded anew
    }
    return;
  }
  if (roots == 0) {
    tree_state->SetTopDistance(0);
    tree_state->ShowState(CViewExternWidget::tr("The plans could not be loaded."), CViewExternWidget::tr("Try again"));
    return;
  }
  for (int row = 0; row < roots; ++row) {
    const QModelIndex root = proxy->index(row, 0);
    if (proxy->canFetchMore(root) || proxy->rowCount(root) > 0) {
      tree_state->hide();
      return;
    }
  }
  tree_state->SetTopDistance(roots * qMax(1, ui.plan_view_tree->sizeHintForRow(0)));
  tree_state->ShowState(CViewExternWidget::tr("There are no plans yet."));
}

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
  about(PlanCommand::CreationInfo, [this](const QString& code) { requestCreationInfo(code); });
  about(PlanCommand::Cycle, [this](const QString& code) { Q_EMIT q->SignalPlanGroupCycle(code, kSecondsPerPlan); });
  connect(actions, &CPanelActions::SignalRefused, q,
          [this](const QString& reason) { Q_EMIT q->SignalMessageTipNeeded(reason, 1); });
}

PanelSituation CViewExternWidget::Private::Situation() const {
  PanelSituation situation = known;
  situation.switches = AskCommandSwitches();
  situation.page = CurrentPage();
  situation.editing = isEditing();
  situation.item_type = situation.page == PanelPage::Search ? MarkedHitType() : Current().data(ItemTypeRole).toInt();
  return situation;
}

void CViewExternWidget::Private::storeEnableState(const QModelIndex& row) {
  const bool under_root = CViewConfigManager::Instance().CreatePlanUnderRootNode();
  known.grants = GrantsAfter(known.grants, row.data(ItemTypeRole).toInt(), known.rights, under_root);
}

void CViewExternWidget::Private::restoreEnableState() {
  actions->Show(States());
}

void CViewExternWidget::Private::renewForRow(const QModelIndex& row) {
  if (known.between_users) {
    return;
  }
  renewRights();
  storeEnableState(row);
  restoreEnableState();
}

void CViewExternWidget::Private::renewRights() {
  using namespace view_plugin_protocol;
  known.rights = {HasRight(AddRight), HasRight(EditRight), HasRight(DeleteRight)};
  restoreEnableState();
}

}  // namespace TarnPlanView
