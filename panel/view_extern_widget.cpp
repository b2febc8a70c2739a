#include "view_extern_widget.h"

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "current_row_keeper.h"
#include "last_searches.h"
#include "plan_item_role.h"
#include "plan_mover.h"
#include "plan_popups.h"
#include "plan_preview.h"
#include "plan_revealer.h"
#include "plan_rows.h"
#include "row_deletion.h"
#include "search_page.h"
#include "search_plan_list_view.h"
#include "tree_notice.h"
#include "undo_offer.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

CViewExternWidget::CViewExternWidget(QWidget* parent) : QWidget(parent), d_(new Private(this)) {
  d_->initUi();
  d_->connectSignalAndSlot();
}

CViewExternWidget::~CViewExternWidget() {
  d_->stop();
  // It belongs to the window once it was shown.
  delete d_->preview;
}

void CViewExternWidget::SetModel(CStandardPlanModel* model) {
  if (!model || model == d_->model) {
    return;
  }
  if (d_->model) {
    disconnect(d_->model, nullptr, this, nullptr);
    disconnect(d_->model, nullptr, d_->ui.plan_view_tree, nullptr);
  }
  const QPointer<CViewSortFilterProxyModel> old = d_->proxy;
  d_->proxy = new CViewSortFilterProxyModel(this, false);
  d_->proxy->setSourceModel(model);
  d_->model = model;
  d_->watchRows();
  delete old;
  d_->editor->SetModel(model);
  d_->ui.plan_view_tree->setAccessibleName(GetTabName());
  connect(model, &CStandardPlanModel::SignalFinshAsynchronous, d_->ui.plan_view_tree,
          [this](const QModelIndex& group, bool expand) { d_->finishExpand(group, expand); });
  d_->revealer->SetModel(model);
  // Later than the proxy's own clean-up, and before the tree looks for rows that are gone.
  connect(model, &QObject::destroyed, this, [this] { d_->dropModel(); });
  for (const char* root : {kPublicRootCode, kOwnRootCode, kReceivedRootCode}) {
    d_->ui.plan_view_tree->ExpandWhenLoaded(QString::fromLatin1(root));
  }
  if (CViewModelDataManager::Instance().IsViewModelInitFinish()) {
    OnDownloadResouceFinished();  // a panel made later has nothing to wait for
  }
}

CStandardPlanModel* CViewExternWidget::GetPlanModel() const {
  return d_->model;
}

void CViewExternWidget::SetStandardViewControl(CStandardViewController* controller) {
  CPlanViewTree* tree = d_->ui.plan_view_tree;
  if (d_->controller) {
    disconnect(d_->controller, nullptr, this, nullptr);
    disconnect(d_->controller, nullptr, tree, nullptr);
    disconnect(tree, nullptr, d_->controller, nullptr);
  }
  d_->controller = controller;
  d_->deletion->SetController(controller);
  d_->mover->SetController(controller);
  d_->revealer->SetController(controller);
  d_->editor->SetController(controller);
  tree->ForgetWaiting();  // no answer will come for these rows
  if (!controller) {
    return;
  }
  using Controller = CStandardViewController;
  connect(controller, &Controller::signalShowMessage, this, &CViewExternWidget::SignalMessageTipNeeded);
  connect(controller, &QObject::destroyed, tree, &CPlanViewTree::ForgetWaiting);
  connect(tree, &CPlanViewTree::AsynchronousExpand, controller, &Controller::OnExpandViewTreeItem);
  connect(controller, &Controller::SignalFinishAnsyGetSubItem, tree,
          [this](const QModelIndex& row, bool expand) { d_->finishExpand(row, expand); });
}

void CViewExternWidget::SetCurPlayItemByIndexCode(const QString& index_code) {
  auto& manager = CViewModelDataManager::Instance();
  if (d_->model) {
    const QString before = d_->model->GetPlayingIndexCode();
    d_->model->SetPlayingIndexCode(index_code);
    if (index_code.isEmpty()) {
      manager.SetPlanPlayStateByIndexCode(d_->MonitorId(), before, false);
    } else {
      manager.SetPlanPlayStateByIndexCode(d_->MonitorId(), index_code, true);
      const QModelIndex row = d_->ui.plan_view_tree->RowOf(index_code, false);
      if (row.isValid()) {
        d_->ui.plan_view_tree->setCurrentIndex(row);
      }
    }
  }
  RenewPlayingIcons(index_code);
}

void CViewExternWidget::RenewPlayingIcons(const QString& index_code) {
  d_->search->SetPlaying(index_code);
  d_->search->RenewIcons();
}

void CViewExternWidget::SetCurPlanByIndexCode(const QString& index_code) {
  d_->keeper->MakeCurrent(index_code);
}

void CViewExternWidget::ShowInTree(const QString& plan_code) {
  if (!d_->IsReady() || plan_code.isEmpty()) {
    return;
  }
  if (d_->ui.wait_widget->IsWaiting()) {
    Q_EMIT SignalMessageTipNeeded(TextOf(Refusal::Loading), CNomalMessage::Hint);
    return;
  }
  if (d_->CurrentPage() != PanelPage::Search) {
    d_->endSearch();
  }
  const auto end_search = [d = d_.get(), text = d_->ui.view_location_line_edit->text()](const QModelIndex&) {
    d->endSearchFor(text);
  };
  d_->revealer->Reveal(plan_code, false, end_search);
}

CPlanViewTree* CViewExternWidget::GetPlanViewTree() const {
  return d_->ui.plan_view_tree;
}

void CViewExternWidget::EditPlanByIndex(const QModelIndex& index) {
  if (d_->IsReady() && index.isValid() && !index.data(IsGroupRole).toBool()) {
    d_->editPlan(index.data(PlanIndexCodeRole).toString());
  }
}

void CViewExternWidget::DelPlanByIndex(const QModelIndex& index) {
  if (d_->controller && index.isValid()) {
    d_->controller->DeletePlanByIndex(index);
  }
}

void CViewExternWidget::GetSaveAsPlanInfo(view_plugin_protocol::AddPlanRequest& request) {
  if (!d_->popups->FillSaveAs(request)) {
    return;
  }
  const QString group_code = StringToQString(request.parent_index_code);
  const auto* own = CViewModelDataManager::Instance().GetViewManagerByTheme(d_->MonitorId(), OwnTheme);
  if (own) {
    request.parent_name = QStringToString(own->FindIndexByIndexCode(group_code, true).data().toString());
  }
}

void CViewExternWidget::GetSaveAsPlanInfo(view_plugin_protocol::UpdatePlanRequest& request) {
  if (!d_->model) {
    return;
  }
  const QModelIndex row = d_->model->FindIndexByIndexCode(StringToQString(request.plan_index_code), false);
  if (!row.isValid()) {
    return;
  }
  request.plan_name = QStringToString(row.data().toString());
  request.index_type = row.data(PlanTypeRole).toInt();
  request.parent_index_code = QStringToString(row.parent().data(GroupIndexCodeRole).toString());
  request.parent_name = QStringToString(row.parent().data().toString());
}

QString CViewExternWidget::GetCurrentSelectedViewID() const {
  return d_->Current().data(PlanIndexCodeRole).toString();
}

void CViewExternWidget::GetCurrentSelectedViewInfo(view_plugin_protocol::TarnPlanViewInfo& info) const {
  const QModelIndex row = d_->Current();
  if (!row.isValid()) {
    return;
  }
  info.is_group = row.data(IsGroupRole).toBool();
  info.index_code = QStringToString(CodeOfRow(row));
  info.name = QStringToString(row.data().toString());
  info.group_index_code = QStringToString(row.parent().data(GroupIndexCodeRole).toString());
  info.group_name = QStringToString(row.parent().data().toString());
  info.type = CViewPublicDef::GetIndexType(row);
  info.playing = row.data(PlayingRole).toBool();
}

bool CViewExternWidget::GetCommandRow(view_plugin_protocol::TarnPlanViewInfo& row) const {
  if (d_->CurrentPage() == PanelPage::Tree) {
    GetCurrentSelectedViewInfo(row);
    if (row.index_code.empty()) {
      row.index_code = QStringToString(d_->Current().data(GroupIndexCodeRole).toString());  // of a root
      row.is_group = true;
    }
  } else if (d_->CurrentPage() == PanelPage::Search) {
    row = d_->search->MarkedPlan();
  }
  return !row.index_code.empty();
}

void CViewExternWidget::SetViewMoreActions(QList<QAction*>& actions) {
  d_->ui.plan_view_tree->SetViewMoreActions(actions);
  d_->ui.search_list_view->SetViewMoreActions(actions);
}

tarn_ui_data_controller::CPopupMenu* CViewExternWidget::GetViewMoreMenu() const {
  return d_->ui.plan_view_tree->GetViewMoreMenu();
}

QWidget* CViewExternWidget::GetLocateViewWidget() const {
  return d_->ui.view_location_line_edit;
}

QStringList CViewExternWidget::GetLastSearches() const {
  return d_->last_searches->Texts();
}

void CViewExternWidget::SetLastSearches(const QStringList& texts) {
  d_->last_searches->SetTexts(texts);
}

void CViewExternWidget::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  d_->editor->SetLogicNodeParam(param);
}

void CViewExternWidget::SetMonitorId(QString monitor_id) {
  d_->monitor_id = std::move(monitor_id);
}

void CViewExternWidget::SetMonitorPointer(QWidget* monitor) {
  d_->editor->SetMonitor(monitor);
}

QString CViewExternWidget::GetTabName() const {
  if (!d_->model) {
    return tr("Plans");
  }
  switch (d_->model->GetViewManagerThemeNodeType()) {
    case PublicTheme:
      return tr("Public plans");
    case OwnTheme:
      return tr("My plans");
    default:
      return tr("Plans received");
  }
}

bool CViewExternWidget::IsEditorOpen() const {
  return d_->editor->IsOpen();
}

bool CViewExternWidget::IsPlanEdited(const QString& plan_code) {
  return CEditorPlace::IsEditedAnywhere(plan_code);
}

void CViewExternWidget::SaveEdited() {
  d_->editor->Save();
}

bool CViewExternWidget::MayLeave() {
  return d_->editor->MayLeave();
}

void CViewExternWidget::ShowServiceTrouble(const QString& text) {
  d_->ui.wait_widget->ShowTrouble(text);
}

void CViewExternWidget::SwitchUserUpdate() {
  const bool was_editing = IsEditorOpen();
  d_->dropPending();
  d_->closePopups();
  d_->ui.view_location_line_edit->clear();
  d_->last_searches->SetTexts({});
  d_->leaveSearch();
  d_->waitForLoad();
  d_->known.between_users = true;
  d_->known.grants.add_group = d_->known.grants.add_plan = false;
  d_->askRights();
  d_->restoreEnableState();
  if (was_editing) {
    Q_EMIT SignalEditorChanged();  // last, since a receiver may end the panel
  }
}

void CViewExternWidget::StopWorking() {
  const bool was_editing = IsEditorOpen();
  d_->stop();
  if (was_editing) {
    Q_EMIT SignalEditorChanged();
  }
}

void CViewExternWidget::Private::stop() {
  stopped = true;
  dropPending();
  renewal.stop();
  ui.wait_widget->SetWaiting(false);
  ui.view_location_line_edit->SetView(nullptr);
  closePopups();
}

void CViewExternWidget::Private::dropModel() {
  ui.plan_view_tree->SetFilterSortModel(nullptr);
  delete proxy;
  notice->Hide();
}

void CViewExternWidget::Private::dropPending() {
  editor->Drop();
  deletion->Drop();
  popups->Drop();
  search->Cancel();
  mover->Stop();
  revealer->Drop();
  undo->Withdraw();
  keeper->SetKeeping(false);
  if (preview) {
    preview->Dismiss();
    preview->Forget();
  }
}

}  // namespace TarnPlanView
