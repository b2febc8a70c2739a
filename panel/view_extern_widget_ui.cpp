#include <QApplication>
#include <QPainter>
#include <QRegExpValidator>
#include <QShortcut>
#include <QStyle>
#include <QToolTip>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/dock_widget.h"
#include "plan_actions.h"
#include "plan_item_role.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

using tarn_ui_data_controller::CSkinLoader;

namespace {

constexpr char kNamePattern[] = "^[^\\\\/:*?\"<|'%>]{1,256}$";
constexpr QSize kBarIconSize(20, 20);
constexpr qreal kDisabledOpacity = 0.35;

// The style's own look of a disabled icon is hardly told from an enabled one on a dark ground.
QPixmap Faded(const QPixmap& pixmap) {
  QPixmap faded(pixmap.size());
  faded.setDevicePixelRatio(pixmap.devicePixelRatio());
  faded.fill(Qt::transparent);
  QPainter painter(&faded);
  painter.setOpacity(kDisabledOpacity);
  painter.drawPixmap(0, 0, pixmap);
  return faded;
}

QIcon BarIcon(const char* name) {
  const QString path = QStringLiteral(":/Images/TarnPlanView/%1.svg").arg(QLatin1String(name));
  const bool dark = CViewConfigManager::Instance().IsDarkSkin();
  QIcon icon(CViewPublicDef::GetDarkPath(path, dark));
  icon.addPixmap(Faded(icon.pixmap(kBarIconSize)), QIcon::Disabled);
  return icon;
}

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
  ui.search_btn->setVisible(switches.IsEnableSearch());
  field->setVisible(switches.IsEnableSearch());
  for (QToolButton* button : {ui.add_group_btn, ui.add_view_btn, ui.edit_btn, ui.delete_btn}) {
    button->setEnabled(false);
  }
  for (QToolButton* button : {ui.add_group_btn, ui.add_view_btn, ui.edit_btn, ui.delete_btn, ui.search_btn}) {
    button->setIconSize(kBarIconSize);
    button->setFocusPolicy(Qt::TabFocus);
  }
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
  nameButtons();
  renewSkin();
  renewToolTips();
  waitForLoad();
}

void CViewExternWidget::Private::renewSkin() {
  ui.add_group_btn->setIcon(BarIcon("bar_add_group"));
  ui.add_view_btn->setIcon(BarIcon("bar_add_plan"));
  ui.edit_btn->setIcon(BarIcon("bar_edit"));
  ui.delete_btn->setIcon(BarIcon("bar_delete"));
  ui.search_btn->setIcon(BarIcon("bar_search"));
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
  const auto clicked = &QAbstractButton::clicked;
  connect(ui.add_group_btn, clicked, q, &CViewExternWidget::onAddGroupBtnClicked);
  connect(ui.add_view_btn, clicked, q, &CViewExternWidget::onAddPlanBtnClicked);
  connect(ui.edit_btn, clicked, q, &CViewExternWidget::onEditBtnClicked);
  connect(ui.delete_btn, clicked, q, &CViewExternWidget::onDeleteBtnClicked);
  connect(ui.search_btn, clicked, q, &CViewExternWidget::OnSearchBtnClicked);

  CPlanViewTree* tree = ui.plan_view_tree;
  connect(tree, &CPlanViewTree::SignalCurrentIndexChanged, q, &CViewExternWidget::onCurrentIndexChanged);
  connect(tree, &CPlanViewTree::SignalMenuClicked, q, &CViewExternWidget::OnMenuClicked);
  connect(tree, &CPlanViewTree::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(tree, &CPlanViewTree::SignalPlayRequested, q, &CViewExternWidget::onStartPlayView);
  connect(tree, &CPlanViewTree::SignalMenuAboutToShow, q, [this](const QModelIndex& index) {
    using namespace tarn_ui_data_controller;
    applyActions(index);
    ui.plan_view_tree->SetMenuItemEnabled(Edit, ui.edit_btn->isEnabled(), ui.edit_btn->toolTip());
    ui.plan_view_tree->SetMenuItemEnabled(Delete, ui.delete_btn->isEnabled(), ui.delete_btn->toolTip());
    const QString no_share = WhyNoShare();
    ui.plan_view_tree->SetMenuItemEnabled(Share, no_share.isEmpty(), no_share);
  });
  connect(mover, &CPlanMover::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  connect(mover, &CPlanMover::SignalMoved, q, &CViewExternWidget::SetCurPlanByIndexCode);
  mover->SetIsEdited(&Private::isEditedAnywhere);

  connect(ui.search_list_view, &CSearchPlanListView::SignalDoubleClicked, q, &CViewExternWidget::onDoubleClicked);
  connect(ui.search_list_view, &CSearchPlanListView::SignalMenuAboutToShow, q,
          [this](auto* menu, const QModelIndex& hit) { offerForHit(menu, hit); });
  connect(ui.search_list_view, &CSearchPlanListView::SignalMenuClicked, q,
          [this](auto type, const QString& code) { onHitCommand(type, code); });
  connect(ui.search_list_view->selectionModel(), &QItemSelectionModel::currentChanged, q, [this] {
    rights = AskRights();
    renewHold();
  });
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
  // As a click, so that a disabled button refuses its key too.
  add(QKeySequence::New, [](Private& panel) { panel.ui.add_view_btn->click(); });
  add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), [](Private& panel) { panel.ui.add_group_btn->click(); });
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
  if (!CViewConfigManager::Instance().IsEnableSearch()) {
    return;
  }
  ui.view_location_line_edit->show();
  ui.search_line_widget->show();
  ui.view_location_line_edit->setFocus(Qt::ShortcutFocusReason);
  ui.view_location_line_edit->selectAll();
}

CViewExternWidget::Private::Page CViewExternWidget::Private::CurrentPage() const {
  const QWidget* page = ui.plan_stacked_widget->currentWidget();
  if (page == ui.search_list_view) {
    return Page::Search;
  }
  return page == ui.wait_widget ? Page::Wait : Page::Tree;
}

void CViewExternWidget::Private::ShowPage(Page page) {
  QWidget* const pages[] = {ui.plan_view_tree, ui.search_list_view, ui.wait_widget};
  ui.plan_stacked_widget->setCurrentWidget(pages[static_cast<int>(page)]);
  if (preview) {
    preview->Dismiss();
  }
}

void CViewExternWidget::Private::waitForLoad() {
  search->Cancel();
  load_failed = false;
  ShowPage(Page::Wait);
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
  if (CurrentPage() == Page::Search) {
    ShowPage(PageBehindSearch());
  }
  renewHold();
  scheduleRenewal();
}

CViewExternWidget::Private::Page CViewExternWidget::Private::PageBehindSearch() const {
  return ui.wait_widget->IsWaiting() ? Page::Wait : Page::Tree;
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
  if (stopped || !proxy || CurrentPage() == Page::Wait) {
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
  if (!proxy || CurrentPage() != Page::Tree || stopped) {
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

void CViewExternWidget::Private::storeEnableState() {
  if (!stored_states) {
    stored_states = {ui.add_group_btn->isEnabled(), ui.add_view_btn->isEnabled(), ui.edit_btn->isEnabled(),
                     ui.delete_btn->isEnabled()};
  }
}

void CViewExternWidget::Private::restoreEnableState() {
  if (!stored_states) {
    return;
  }
  const std::array<bool, 4> states = *stored_states;
  stored_states.reset();
  ui.add_group_btn->setEnabled(states[0]);
  ui.add_view_btn->setEnabled(states[1]);
  ui.edit_btn->setEnabled(states[2]);
  ui.delete_btn->setEnabled(states[3]);
  renewToolTips();
}

void CViewExternWidget::Private::applyActions(const QModelIndex& index) {
  if (between_users) {
    return;
  }
  restoreEnableState();
  rights = AskRights();
  const PlanActions actions = AllowedActions(index, rights);
  const auto apply = [](QToolButton* button, const std::optional<bool>& allowed) {
    if (allowed) {
      button->setEnabled(*allowed);
    }
  };
  apply(ui.add_group_btn, actions.add_group);
  apply(ui.add_view_btn, actions.add_plan);
  apply(ui.edit_btn, actions.edit);
  apply(ui.delete_btn, actions.remove);
  renewToolTips();
  renewHold();
}

void CViewExternWidget::Private::renewHold() {
  restoreEnableState();
  const bool editing = isEditing();
  const bool searching = CurrentPage() == Page::Search;
  if (!editing && !searching) {
    return;
  }
  storeEnableState();
  ui.add_group_btn->setEnabled(false);
  ui.delete_btn->setEnabled(false);
  if (editing) {
    ui.edit_btn->setEnabled(false);
  } else if (mayEditHit(MarkedHit())) {
    ui.edit_btn->setEnabled(true);
  }
  renewToolTips();
}

QString CViewExternWidget::Private::MissingRight(int right) const {
  if (CViewPublicDef::GetIndexType(Current()) != PublicTheme || rights.Has(right)) {
    return QString();
  }
  switch (right) {
    case kAddRight:
      return CViewExternWidget::tr("You lack the right to add plans.");
    case kEditRight:
      return CViewExternWidget::tr("You lack the right to edit plans.");
    default:
      return CViewExternWidget::tr("You lack the right to delete plans.");
  }
}

QString CViewExternWidget::Private::WhyOff(const QToolButton* button, int right) const {
  if (CurrentPage() != Page::Search) {
    return MissingRight(right);
  }
  if (button != ui.edit_btn) {
    return CViewExternWidget::tr("Leave the search first.");
  }
  return isEditing() || !MarkedHit().isValid() ? QString() : CViewExternWidget::tr("You lack the right to edit plans.");
}

void CViewExternWidget::Private::renewToolTips() {
  const struct {
    QToolButton* button;
    int right;
    const char* keys;
  } buttons[] = {
      {ui.add_group_btn, kAddRight, "Ctrl+Shift+N"},
      {ui.add_view_btn, kAddRight, "Ctrl+N"},
      {ui.edit_btn, kEditRight, "F2"},
      {ui.delete_btn, kDeleteRight, "Del"},
  };
  for (const auto& one : buttons) {
    QString tip = QStringLiteral("%1 (%2)").arg(one.button->accessibleName(), QLatin1String(one.keys));
    if (!one.button->isEnabled()) {
      const QString reason = WhyOff(one.button, one.right);
      tip += reason.isEmpty() ? QString() : QStringLiteral("\n") + reason;
    }
    one.button->setToolTip(tip);
  }
}

void CViewExternWidget::Private::nameButtons() {
  ui.add_group_btn->setAccessibleName(CViewExternWidget::tr("New group"));
  ui.add_view_btn->setAccessibleName(CViewExternWidget::tr("New plan"));
  ui.edit_btn->setAccessibleName(CViewExternWidget::tr("Edit"));
  ui.delete_btn->setAccessibleName(CViewExternWidget::tr("Delete"));
  ui.search_btn->setAccessibleName(CViewExternWidget::tr("Search"));
  ui.search_btn->setToolTip(QStringLiteral("%1 (Ctrl+F)").arg(CViewExternWidget::tr("Search")));
}

}  // namespace TarnPlanView
