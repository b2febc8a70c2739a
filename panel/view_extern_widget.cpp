#include "view_extern_widget.h"

#include <QHash>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/popup_menu.h"
#include "WidgetKit/dock_widget.h"
#include "plan_item_role.h"
#include "view_extern_widget_p.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

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
  connect(d_->proxy, &QAbstractItemModel::rowsAboutToBeRemoved, this,  // before the tree makes another row current
          [this](const QModelIndex& parent, int first, int last) { d_->noteRemoval(parent, first, last); });
  d_->ui.plan_view_tree->SetFilterSortModel(d_->proxy);
  d_->ui.plan_view_tree->SetShowRightHoverDelgete();
  delete old;
  d_->model = model;
  d_->ui.plan_view_tree->setAccessibleName(GetTabName());
  const auto renew = [this] { d_->scheduleRenewal(); };
  connect(d_->proxy, &QAbstractItemModel::rowsInserted, this, renew);
  connect(d_->proxy, &QAbstractItemModel::rowsRemoved, this, renew);
  connect(d_->proxy, &QAbstractItemModel::dataChanged, this, renew);
  connect(d_->proxy, &QAbstractItemModel::modelReset, this, renew);
  connect(model, &CStandardPlanModel::SignalFinshAsynchronous, d_->ui.plan_view_tree,
          &CPlanViewTree::OnFinishAnsySourceExpandedTree);
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
  d_->deleting.clear();
  tree->ForgetWaiting();  // nobody will answer for these rows
  d_->mover->SetController(controller);
  if (d_->plan_editor) {
    d_->plan_editor->SetController(controller);
  }
  if (!controller) {
    return;
  }
  using Controller = CStandardViewController;
  connect(controller, &Controller::signalShowMessage, this, &CViewExternWidget::SignalMessageTipNeeded);
  connect(controller, &QObject::destroyed, tree, &CPlanViewTree::ForgetWaiting);
  connect(controller, &Controller::SignalGetPlanInfo, this, [this](const auto& plan) {
    if (d_->plan_editor) {
      d_->plan_editor->OnPlanInfo(plan);
    }
  });
  connect(tree, &CPlanViewTree::AsynchronousExpand, controller, &Controller::OnExpandViewTreeItem);
  connect(controller, &Controller::SignalFinishAnsyGetSubItem, tree, &CPlanViewTree::OnFinishAnsyFilterExpandedTree);
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
      const QModelIndex row = d_->RowOf(index_code, false);
      if (row.isValid()) {
        d_->ui.plan_view_tree->setCurrentIndex(row);
      }
    }
  }
  RenewPlayingIcons(index_code);
}

void CViewExternWidget::RenewPlayingIcons(const QString& index_code) {
  d_->playing_code = index_code;
  if (d_->CurrentPage() == PanelPage::Search) {
    d_->renewSearchIcons();
  }
}

void CViewExternWidget::SetCurPlanByIndexCode(const QString& index_code) {
  const QModelIndex row = d_->RowOf(index_code, false);
  if (!row.isValid()) {
    return;
  }
  if (!d_->ui.plan_view_tree->isExpanded(row.parent())) {
    d_->ui.plan_view_tree->expand(row.parent());
  }
  d_->ui.plan_view_tree->setCurrentIndex(row);
}

CPlanViewTree* CViewExternWidget::GetPlanViewTree() const {
  return d_->ui.plan_view_tree;
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
  if (!d_->save_as) {
    return;
  }
  d_->save_as->GetPlanParam(request);
  const QString group_code = StringToQString(request.parent_index_code);
  const auto* own = CViewModelDataManager::Instance().GetViewManagerByTheme(d_->MonitorId(), OwnTheme);
  if (own) {
    request.parent_name = QStringToString(own->FindIndexByIndexCode(group_code, true).data().toString());
  }
}

void CViewExternWidget::GetSaveAsPlanInfo(view_plugin_protocol::UpdatePlanRequest& request) {
  const QModelIndex row =
      d_->model ? d_->model->FindIndexByIndexCode(StringToQString(request.plan_index_code), false) : QModelIndex();
  if (row.isValid()) {
    d_->fillUpdate(row, request);
  }
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
  info.index_code = QStringToString(row.data(info.is_group ? GroupIndexCodeRole : PlanIndexCodeRole).toString());
  info.name = QStringToString(row.data().toString());
  info.group_index_code = QStringToString(row.parent().data(GroupIndexCodeRole).toString());
  info.group_name = QStringToString(row.parent().data().toString());
  info.type = CViewPublicDef::GetIndexType(row);
  info.playing = row.data(PlayingRole).toBool();
}

void CViewExternWidget::SetViewMoreActions(QList<QAction*>& actions) {
  d_->ui.plan_view_tree->SetViewMoreActions(actions);
}

tarn_ui_data_controller::CPopupMenu* CViewExternWidget::GetViewMoreMenu() const {
  return d_->ui.plan_view_tree->GetViewMoreMenu();
}

QWidget* CViewExternWidget::GetLocateViewWidget() const {
  return d_->ui.view_location_line_edit;
}

void CViewExternWidget::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  d_->logic_node = param;
  if (d_->plan_editor) {
    d_->plan_editor->SetLogicNodeParam(param);
  }
}

void CViewExternWidget::SetMonitorId(QString monitor_id) {
  d_->monitor_id = std::move(monitor_id);
}

void CViewExternWidget::SetMonitorPointer(QWidget* monitor) {
  d_->monitor = monitor;
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
  return d_->isEditing();
}

void CViewExternWidget::SaveEdited() {
  if (d_->isEditing()) {
    d_->plan_editor->Save();
  }
}

bool CViewExternWidget::MayLeave() {
  if (!d_->isEditing()) {
    return true;
  }
  const QPointer<CViewExternWidget> alive(this);
  d_->leaving = true;  // before the question: the save may be done by the time it returns
  const bool may_leave = d_->plan_editor->MayClose();
  if (!alive) {
    return false;
  }
  if (may_leave) {
    d_->leaving = false;
    d_->closePlanEditor();
  } else {
    d_->leaving = d_->leaving && d_->plan_editor && d_->plan_editor->IsSaving();
  }
  return may_leave;
}

void CViewExternWidget::ShowServiceTrouble(const QString& text) {
  d_->ui.wait_widget->ShowTrouble(text);
}

void CViewExternWidget::SwitchUserUpdate() {
  const bool was_editing = d_->isEditing();
  d_->dropPending();
  d_->closePopups();
  d_->ui.view_location_line_edit->clear();
  d_->leaveSearch();
  d_->waitForLoad();
  d_->row_before_load.reset();
  d_->known.between_users = true;
  d_->known.grants.add_group = d_->known.grants.add_plan = false;
  d_->renewRights();
  if (was_editing) {
    Q_EMIT SignalEditorChanged();  // last, since whoever hears it may end the panel
  }
}

void CViewExternWidget::StopWorking() {
  const bool was_editing = d_->isEditing();
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
  tree_state->hide();
}

void CViewExternWidget::Private::dropPending() {
  ++session;
  creation_info_calls.Drop();
  search->Cancel();
  mover->Stop();
  deleting.clear();
  open_next.reset();
  leaving = false;
  removed_current.clear();
  saved_plan.clear();
  if (preview) {
    preview->Dismiss();
    preview->Forget();
  }
}

}  // namespace TarnPlanView
