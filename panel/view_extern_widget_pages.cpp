#include <QApplication>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "current_row_keeper.h"
#include "last_searches.h"
#include "plan_item_role.h"
#include "plan_menu.h"
#include "plan_preview.h"
#include "search_page.h"
#include "search_plan_list_view.h"
#include "tree_notice.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"

// Which page stands below the bar: the tree, what a search has found, or the wait for a load.
namespace TarnPlanView {

using MarUIControl::CNomalMessage;

PanelPage CViewExternWidget::Private::CurrentPage() const {
  const QWidget* page = ui.plan_stacked_widget->currentWidget();
  if (page == ui.search_list_view) {
    return PanelPage::Search;
  }
  return page == ui.wait_widget ? PanelPage::Wait : PanelPage::Tree;
}

void CViewExternWidget::Private::ShowPage(PanelPage page) {
  QWidget* const pages[] = {ui.plan_view_tree, ui.search_list_view, ui.wait_widget};
  QWidget* shown = pages[static_cast<int>(page)];
  // Of the window: before it is active, its focus is the one that it will have.
  const bool has_focus = ui.plan_stacked_widget->isAncestorOf(q->window()->focusWidget());
  ui.plan_stacked_widget->setCurrentWidget(shown);
  // Not to a button on it that goes in a moment: from there the focus would leave the panel.
  if (has_focus || ui.plan_stacked_widget->isAncestorOf(QApplication::focusWidget())) {
    shown->setFocus();
  }
  if (preview) {
    preview->Dismiss();
  }
}

// --- Search ---------------------------------------------------------------------------------------------------------

void CViewExternWidget::OnSearchBtnClicked() {
  const bool show = !d_->ui.view_location_line_edit->isVisibleTo(this);
  d_->ui.view_location_line_edit->setVisible(show);
  d_->ui.search_line_widget->setVisible(show);
  if (show) {
    d_->ui.view_location_line_edit->setFocus();
  } else {
    d_->leaveSearch();
  }
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

void CViewExternWidget::OnFuzzySearchPlan() {
  if (d_->stopped) {
    return;
  }
  const auto* field = d_->ui.view_location_line_edit;
  if (!field->IsTypedSearch()) {
    d_->last_searches->Add(field->text().trimmed());
  }
  d_->search->Start();
}

bool CViewExternWidget::Private::offerLastSearches() {
  return !stopped && ui.view_location_line_edit->text().isEmpty() && last_searches->Offer();
}

void CViewExternWidget::Private::goToHits() {
  if (search->IsUnderWay() && !stopped) {
    search->Start();
  } else if (!offerLastSearches()) {
    ui.plan_stacked_widget->currentWidget()->setFocus();
  }
}

void CViewExternWidget::onGetSearchedResult(const std::list<view_plugin_protocol::SearchedPlan>& plans) {
  const bool was_in_tree = window()->focusWidget() == d_->ui.plan_view_tree;
  d_->ShowPage(PanelPage::Search);
  if (was_in_tree) {
    d_->ui.view_location_line_edit->setFocus();  // a Return meant for a row must not play a hit
  }
  d_->search->Show(plans);
  if (!was_in_tree) {
    d_->search->TakeKeyboard();
  }
  d_->restoreEnableState();
}

// Back to the page below the hits.
void CViewExternWidget::Private::leaveSearch() {
  search->Cancel();
  if (CurrentPage() == PanelPage::Search) {
    ShowPage(ui.wait_widget->IsWaiting() ? PanelPage::Wait : PanelPage::Tree);
  }
  restoreEnableState();
  scheduleRenewal();
}

void CViewExternWidget::Private::endSearch() {
  ui.view_location_line_edit->clear();
  leaveSearch();
  ui.plan_view_tree->setFocus();
  if (Current().isValid()) {
    ui.plan_view_tree->scrollTo(Current());
  }
}

void CViewExternWidget::Private::endSearchFor(const QString& text) {
  if (CurrentPage() == PanelPage::Search && ui.view_location_line_edit->text() == text) {
    endSearch();
  }
}

void CViewExternWidget::Private::showInTree(const QString& code, int family) {
  if (model && family == model->GetViewManagerThemeNodeType()) {
    q->ShowInTree(code);
    return;
  }
  endSearch();
  Q_EMIT q->SignalShowInOtherTree(code, family);
}

void CViewExternWidget::onDoubleClicked(const QString& index_code) {
  d_->play(index_code);
}

void CViewExternWidget::Private::offerForHit(tarn_ui_data_controller::CPopupMenu* menu) {
  askRights();
  restoreEnableState();
  const CommandStates states = States();
  ShowEntries(*menu, states, ui.plan_view_tree->HiddenMenuItems());
  EnableEntries(*menu, states);
  ui.search_list_view->OfferShowInTree(TextOf(states[PlanCommand::ShowInTree].reason));
  Q_EMIT q->SignalRowMenuAboutToShow();
}

void CViewExternWidget::Private::onHitCommand(tarn_ui_data_controller::MsgType type, const QString& code) {
  const std::optional<PlanCommand> command = CommandOf(type);
  if (!command || !IsReady() || ui.plan_view_tree->HiddenMenuItems().contains(type)) {
    return;
  }
  if (!search->Mark(code)) {  // another search has ended meanwhile
    Q_EMIT q->SignalMessageTipNeeded(CViewExternWidget::tr("This row is no longer there."), CNomalMessage::Failure);
    return;
  }
  run(*command, PanelPage::Search, code);
}

// --- Loads ----------------------------------------------------------------------------------------------------------

void CViewExternWidget::Private::waitForLoad() {
  search->Cancel();
  notice->OnLoadBegun();
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

void CViewExternWidget::OnDownloadResouceFinished() {
  if (d_->stopped) {
    return;
  }
  d_->known.between_users = false;
  d_->keeper->SetKeeping(true);
  d_->ui.wait_widget->SetWaiting(false);
  d_->leaveSearch();
  d_->ShowPage(PanelPage::Tree);
  // The rows come after this signal; only then it is known whether there are any.
  QMetaObject::invokeMethod(
      this, [this] { d_->onLoadChecked(); }, Qt::QueuedConnection);
}

// The load has come to its end, and with it the time to say whether it brought anything.
void CViewExternWidget::Private::onLoadChecked() {
  if (stopped || !proxy || CurrentPage() == PanelPage::Wait) {
    return;
  }
  notice->OnLoadEnded();
  renewAfterRows();
  if (!Current().isValid() && proxy->rowCount() > 0) {
    ui.plan_view_tree->setCurrentIndex(proxy->index(0, 0));
  }
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
  keeper->OnRowsChanged();
  if (CurrentPage() == PanelPage::Tree && !notice->Renew()) {
    waitForLoad();
  }
}

}  // namespace TarnPlanView
