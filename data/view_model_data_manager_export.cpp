#include "view_model_data_manager_export.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "plan_log.h"
#include "standard_plan_model_export.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;

CViewModelDataManagerExport::CViewModelDataManagerExport() = default;
CViewModelDataManagerExport::~CViewModelDataManagerExport() = default;

void CViewModelDataManagerExport::InitManager() {
  CViewModelDataManager::Instance().InitManager();
}

void CViewModelDataManagerExport::UninitManager() {
  CViewModelDataManager::Instance().UninitManager();
}

void CViewModelDataManagerExport::InitViewConfigInterfacePointer() {
  CViewModelDataManager::Instance().InitViewConfigInterfacePointer();
}

void CViewModelDataManagerExport::AnalysisResourceInitViewGroup() {
  view_plugin_protocol::ClienInitViewDataResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().IsInitViewGroupFinish({}, response)) {
    TARN_PLAN_LOG_ERROR(0, "AnalysisResourceInitViewGroup is Failed");
  }
}

void CViewModelDataManagerExport::AnalysisResourceInitView() {
  view_plugin_protocol::ClienInitViewDataResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().IsInitViewFinish({}, response)) {
    TARN_PLAN_LOG_ERROR(0, "AnalysisResourceInitView is Failed");
  }
}

void CViewModelDataManagerExport::LoadAllViewManagerModelData() {
  CViewModelDataManager::Instance().LoadAllViewManagerModelData();
}

bool CViewModelDataManagerExport::IsViewResourceDownLoadFinish() {
  return CViewModelDataManager::Instance().IsViewResourceDownLoadFinish();
}

bool CViewModelDataManagerExport::IsViewModelInitFinish() {
  return CViewModelDataManager::Instance().IsViewModelInitFinish();
}

CStandardPlanModelExport* CViewModelDataManagerExport::GetViewManagerByTheme(const QString& monitorId,
                                                                             ThemeNodeType type) {
  auto param = std::make_shared<CViewManagerParam>();
  param->GetDataPtr()->name = monitorId;
  param->GetDataPtr()->type = type;
  return new CStandardPlanModelExport(param, this);
}

void CViewModelDataManagerExport::SetPlanPlayStateByIndexCode(const QString& monitorId, const QString& code,
                                                              bool playing) {
  CViewModelDataManager::Instance().SetPlanPlayStateByIndexCode(monitorId, code, playing);
}

bool CViewModelDataManagerExport::event(QEvent* event) {
  return QObject::event(event);
}

}  // namespace TarnPlanView
