#include "view_model_data_manager.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "auto_plan_helper.h"
#include "end_with_application.h"
#include "plan_item_role.h"
#include "plan_log.h"
#include "row_record.h"
#include "standard_plan_model.h"
#include "view_config_manager.h"
#include "view_group.h"
#include "view_model_data_manager_p.h"
#include "view_public_def.h"

// Life cycle, loading and the list of models. The tree is built in view_model_data_manager_tree.cpp, results and
// notices are applied in view_model_data_manager_changes.cpp.
namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;

namespace {

constexpr int kMonitorCount = 4;
constexpr char kSystemConfigId[] = "system_config";

void RegisterRoot(CViewGroupManager* root, int action) {
  CViewBusinessInterfaceMgr::Instance().ViewRegisterResourceUpdate(
      root, {ResourceData::RT_VIEW_GROUP, root->GetIndexCode(), action});
}

}  // namespace

CViewModelDataManager::CViewModelDataManager() : d_(std::make_unique<Private>(this)) {
  qRegisterMetaType<ResourceData::ResourceType>("ResourceData::ResourceType");
  qRegisterMetaType<view_plugin_protocol::PlanGroup>("view_plugin_protocol::PlanGroup");
  qRegisterMetaType<view_plugin_protocol::PlanBasicInfo>("view_plugin_protocol::PlanBasicInfo");
  qRegisterMetaType<view_plugin_protocol::PlanItem>("view_plugin_protocol::PlanItem");
  qRegisterMetaType<view_plugin_protocol::SearchedPlan>("view_plugin_protocol::SearchedPlan");
  ReleaseWithTheApplication();
  // Reads the switches now, on the GUI thread; workers ask for them later.
  CViewConfigManager::Instance();
  makeModels();
  registerOwnModels();
  connect(this, &CViewModelDataManager::SignalViewResourceDownFinish, this, &CViewModelDataManager::OnViewUiTreeInit);
}

CViewModelDataManager::~CViewModelDataManager() {
  d_->poll->Stop();
  DeleteViewGroupManager();
  dropObservers();
}

void CViewModelDataManager::makeModels() {
  for (int monitor = 0; monitor < kMonitorCount; ++monitor) {
    const QString id = QString::number(monitor);
    d_->own_models.append(new CStandardPlanModel(ViewManagerParam(PublicTheme, id), this));
    d_->own_models.append(new CStandardPlanModel(ViewManagerParam(OwnTheme, id), this));
  }
  d_->own_models.append(new CStandardPlanModel(ViewManagerParam(OwnTheme, QString::fromLatin1(kSystemConfigId)), this));
}

void CViewModelDataManager::registerOwnModels() {
  for (CStandardPlanModel* model : qAsConst(d_->own_models)) {
    AddViewManagerModel(model);
  }
}

void CViewModelDataManager::InitViewConfigInterfacePointer() {
  d_->view_config = TarnConfiguration::CreateViewConfigInterface();
  if (!d_->view_config) {
    TARN_PLAN_LOG_ERROR(0, "new CAbstractInterfaceImplementation failed");
  }
}

void CViewModelDataManager::InitManager() {
  d_->ended = false;
  registerOwnModels();
  CreateViewGroupManager();
}

void CViewModelDataManager::UninitManager() {
  d_->ended = true;
  d_->poll->Stop();
  DeleteViewGroupManager();
  dropObservers();
  ClearModelData();
  d_->data_requested = false;
  d_->init_finished = false;
  d_->models.clear();
}

void CViewModelDataManager::CreateViewGroupManager() {
  if (d_->group_manager) {
    return;
  }
  d_->group_manager = std::make_unique<CViewGroupManager>();
  CViewGroupManager* root = d_->group_manager.get();
  connect(root, &CViewGroupManager::SignalRootChildAdded, this, &CViewModelDataManager::OnRootChildAdded);
  connect(root, &CViewGroupManager::SignalRootChildRemoved, this, &CViewModelDataManager::OnViewGroupChildRemoved);
  connect(root, &CViewGroupManager::SignalViewModelDataChanged, this, &CViewModelDataManager::OnUpdateViewModelData);
  RegisterRoot(root, kRegister);
}

void CViewModelDataManager::DeleteViewGroupManager() {
  if (!d_->group_manager) {
    return;
  }
  RegisterRoot(d_->group_manager.get(), kUnregister);
  d_->group_manager.reset();
}

void CViewModelDataManager::LoadAllViewManagerModelData() {
  if (d_->data_requested) {
    Q_EMIT SignalDataDownloadFinished();
    return;
  }
  d_->data_requested = true;
  d_->poll->Stop();  // a wait of an earlier load must not fill the models once more
  if (IsViewResourceDownLoadFinish()) {
    TARN_PLAN_LOG_INFO("Resource DownLoad Finish View Init");
    OnViewUiTreeInit();
    return;
  }
  d_->poll->Start([this] {
    TARN_PLAN_LOG_INFO("Resource DownLoading View Init");
    Q_EMIT SignalViewResourceDownFinish();
  });
}

void CViewModelDataManager::OnViewUiTreeInit() {
  // Panels leave their wait page before the trees are filled.
  Q_EMIT SignalDataDownloadFinished();
  ClearModelData();
  auto& host = CViewBusinessInterfaceMgr::Instance();
  view_plugin_protocol::ClienInitViewDataResponse groups_ready;
  view_plugin_protocol::ClienInitViewDataResponse plans_ready;
  if (!host.IsInitViewGroupFinish({}, groups_ready)) {
    TARN_PLAN_LOG_ERROR(0, "IsInitViewGroupFinish is Failed");
    return;
  }
  if (!host.IsInitViewFinish({}, plans_ready)) {
    // One text for both: log readers search for it.
    TARN_PLAN_LOG_ERROR(0, "IsInitViewGroupFinish is Failed");
    return;
  }
  d_->data_requested = true;
  InitRootItem();
  TARN_PLAN_LOG_INFO("InitRootItem");
  if (isLoadAll()) {
    TARN_PLAN_LOG_INFO("Is Load All.");
    InsertAllChildItem(QString::fromLatin1(kPublicRootCode), PublicTheme);
    InsertAllChildItem(QString::fromLatin1(kOwnRootCode), OwnTheme);
    // Asked for also while no model shows this family: the call tells the host that the client wants it.
    InsertAllChildItem(QString::fromLatin1(kReceivedRootCode), ReceivedTheme);
  }
  d_->init_finished = true;
}

void CViewModelDataManager::InitRootItem() {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = kTopLevelCode;
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    return;
  }
  const QVector<CRowRecord::Ptr> roots = CRowRecord::OfAll(response.groups);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    model->AddRootRows(roots);
  }
}

void CViewModelDataManager::ClearAllViewModelData() {
  TARN_PLAN_LOG_INFO("ClearAllViewModelData Clear Data");
  d_->changes.NoteEverything();
  noteNotice();
  d_->unanswered.Clear();
  d_->data_requested = false;
  d_->init_finished = false;
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    model->UninitModelRootItem();
  }
  CViewBusinessInterfaceMgr::Instance().ClearViewData();
}

void CViewModelDataManager::ClearModelData() {
  TARN_PLAN_LOG_INFO("ClearModelData View Data");
  d_->changes.NoteEverything();
  noteNotice();
  d_->unanswered.Clear();
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    model->UninitModelRootItem();
  }
}

void CViewModelDataManager::OnUpdateViewModelData() {
  // The tree they stood for is forgotten. Loading makes them again, and registering lets the host tell what is there.
  dropObservers();
  ClearAllViewModelData();
  LoadAllViewManagerModelData();
}

bool CViewModelDataManager::IsViewResourceDownLoadFinish() const {
  return CViewBusinessInterfaceMgr::Instance().IsViewResourceDownFinish();
}

bool CViewModelDataManager::IsViewModelInitFinish() const {
  return d_->init_finished;
}

void CViewModelDataManager::AddViewManagerModel(CStandardPlanModel* model) {
  if (d_->models.contains(model)) {
    return;
  }
  d_->models.append(model);
  connect(model, &QObject::destroyed, this, [this, model] { d_->models.removeOne(model); });
}

void CViewModelDataManager::RemViewManagerModel(CStandardPlanModel* model) {
  d_->models.removeOne(model);
}

CStandardPlanModel* CViewModelDataManager::GetViewManagerByTheme(const QString& monitorId, ThemeNodeType type) const {
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (model->GetViewManagerThemeNodeType() == type && model->GetViewManagerMonitorId() == monitorId) {
      return model;
    }
  }
  return nullptr;
}

bool CViewModelDataManager::isLoadAll() const {
  return CViewConfigManager::Instance().IsLoadAll();
}

void CViewModelDataManager::recheckTimedPlay() {
  if (CViewConfigManager::Instance().IsSupportTimedPlay()) {
    CAutoPlanHelper::Instance().CheckAutoRunPlan();
  }
}

view_plugin_protocol::GetClientDefaultViewConfigResponse CViewModelDataManager::GetSeverResponseData() const {
  return d_->default_view;
}

view_plugin_protocol::ClienDefaultViewConfigReponse CViewModelDataManager::GetSetConfigResponseData() const {
  return d_->default_view_set;
}

void CViewModelDataManager::OnGetViewConfigData(
    view_plugin_protocol::GetClientDefaultViewConfigResponse& response_param) {
  d_->default_view = response_param;
}

void CViewModelDataManager::OnSetViewConfigData(view_plugin_protocol::ClienDefaultViewConfigReponse& response_param) {
  d_->default_view_set = response_param;
}

}  // namespace TarnPlanView
