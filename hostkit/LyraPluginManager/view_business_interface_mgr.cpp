#include "LyraPluginManager/view_business_interface_mgr.h"

#include "forward_call.h"

namespace LyraPluginManager {

using TarnHost::ForwardCall;
using TarnHost::IHostServices;

bool CViewBusinessInterfaceMgr::GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest& request,
                                              view_plugin_protocol::GetPlanGroupsResponse& response) {
  return ForwardCall(&IHostServices::GetPlanGroups, request, response);
}

bool CViewBusinessInterfaceMgr::GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest& request,
                                                view_plugin_protocol::GetPlansInGroupResponse& response) {
  return ForwardCall(&IHostServices::GetPlansInGroup, request, response);
}

bool CViewBusinessInterfaceMgr::AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest& request,
                                             view_plugin_protocol::AddPlanGroupResponse& response) {
  return ForwardCall(&IHostServices::AddPlanGroup, request, response);
}

bool CViewBusinessInterfaceMgr::UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request,
                                                view_plugin_protocol::UpdatePlanGroupResponse& response) {
  return ForwardCall(&IHostServices::UpdatePlanGroup, request, response);
}

bool CViewBusinessInterfaceMgr::DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest& request,
                                                view_plugin_protocol::DeletePlanGroupResponse& response) {
  return ForwardCall(&IHostServices::DeletePlanGroup, request, response);
}

bool CViewBusinessInterfaceMgr::CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest& request,
                                                view_plugin_protocol::CountBelowGroupResponse& response) {
  return ForwardCall(&IHostServices::CountBelowGroup, request, response);
}

bool CViewBusinessInterfaceMgr::AddPlan(const view_plugin_protocol::AddPlanRequest& request,
                                        view_plugin_protocol::AddPlanResponse& response) {
  return ForwardCall(&IHostServices::AddPlan, request, response);
}

bool CViewBusinessInterfaceMgr::UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request,
                                           view_plugin_protocol::UpdatePlanResponse& response) {
  return ForwardCall(&IHostServices::UpdatePlan, request, response);
}

bool CViewBusinessInterfaceMgr::DeletePlan(const view_plugin_protocol::DeletePlanResquest& request,
                                           view_plugin_protocol::DeletePlanResponse& response) {
  return ForwardCall(&IHostServices::DeletePlan, request, response);
}

bool CViewBusinessInterfaceMgr::RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request,
                                               view_plugin_protocol::RestoreDeletedResponse& response) {
  return ForwardCall(&IHostServices::RestoreDeleted, request, response);
}

bool CViewBusinessInterfaceMgr::GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest& request,
                                              view_plugin_protocol::GetPlanDetailResponse& response) {
  return ForwardCall(&IHostServices::GetPlanDetail, request, response);
}

bool CViewBusinessInterfaceMgr::AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam& request,
                                           view_plugin_protocol::AddPlanLogResponseParam& response) {
  return ForwardCall(&IHostServices::AddPlanLog, request, response);
}

bool CViewBusinessInterfaceMgr::SearchPlan(const view_plugin_protocol::SearchPlanRequest& request,
                                           view_plugin_protocol::SearchPlanResponse& response) {
  return ForwardCall(&IHostServices::SearchPlan, request, response);
}

bool CViewBusinessInterfaceMgr::GetClientViewConfig(
    const view_plugin_protocol::GetClientDefaultViewConfigRequest& request,
    view_plugin_protocol::GetClientDefaultViewConfigResponse& response) {
  return ForwardCall(&IHostServices::GetClientViewConfig, request, response);
}

bool CViewBusinessInterfaceMgr::SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest& request,
                                                    view_plugin_protocol::ClienDefaultViewConfigReponse& response) {
  return ForwardCall(&IHostServices::SetClientViewConfig, request, response);
}

bool CViewBusinessInterfaceMgr::GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest& request,
                                              view_plugin_protocol::GetPlanConfigResponse& response) {
  return ForwardCall(&IHostServices::GetPlanConfig, request, response);
}

bool CViewBusinessInterfaceMgr::GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest& request,
                                               view_plugin_protocol::GetCurrentUserResponse& response) {
  return ForwardCall(&IHostServices::GetCurrentUser, request, response);
}

bool CViewBusinessInterfaceMgr::GetAllUserInfo(const view_plugin_protocol::UserRequestInfo& request,
                                               view_plugin_protocol::UserResponseInfo& response) {
  return ForwardCall(&IHostServices::GetAllUserInfo, request, response);
}

bool CViewBusinessInterfaceMgr::ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo& request,
                                               view_plugin_protocol::ShareViewResponseInfo& response) {
  return ForwardCall(&IHostServices::ViewShareUsers, request, response);
}

bool CViewBusinessInterfaceMgr::IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                                                      view_plugin_protocol::ClienInitViewDataResponse& response) {
  return ForwardCall(&IHostServices::IsInitViewGroupFinish, request, response);
}

bool CViewBusinessInterfaceMgr::IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest& request,
                                                 view_plugin_protocol::ClienInitViewDataResponse& response) {
  return ForwardCall(&IHostServices::IsInitViewFinish, request, response);
}

bool CViewBusinessInterfaceMgr::IsViewResourceDownFinish() {
  const auto services = TarnHost::InstalledHostServices();
  return services && services->IsViewResourceDownFinish();
}

void CViewBusinessInterfaceMgr::ClearViewData() {
  if (const auto services = TarnHost::InstalledHostServices()) {
    services->ClearViewData();
  }
}

void CViewBusinessInterfaceMgr::ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                                           const view_plugin_protocol::ViewObserverInfo& info) {
  if (const auto services = TarnHost::InstalledHostServices()) {
    services->ViewRegisterResourceUpdate(observer, info);
  }
}

}  // namespace LyraPluginManager
