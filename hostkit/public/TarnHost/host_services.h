#pragma once

#include <memory>
#include <string>
#include <vector>

#include "LyraPluginManager/play_plugin_protocol.h"
#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceData/resource_observer.h"
#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/region_item_info.h"
#include "TarnHost/camera_access.h"
#include "TarnHost/site_users.h"
#include "host_export.h"

namespace TarnHost {

/// What stands behind the plug-in manager's singletons: the plan store, or a decorator around it.
/// Contract of each call as in `LyraPluginManager`. Thread: any, several at once.
class TARN_HOST_EXPORT IHostServices {
 public:
  virtual ~IHostServices() = default;

  virtual bool GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest&,
                             view_plugin_protocol::GetPlanGroupsResponse&) = 0;
  virtual bool GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest&,
                               view_plugin_protocol::GetPlansInGroupResponse&) = 0;
  virtual bool AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest&,
                            view_plugin_protocol::AddPlanGroupResponse&) = 0;
  virtual bool UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest&,
                               view_plugin_protocol::UpdatePlanGroupResponse&) = 0;
  virtual bool DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest&,
                               view_plugin_protocol::DeletePlanGroupResponse&) = 0;
  virtual bool AddPlan(const view_plugin_protocol::AddPlanRequest&, view_plugin_protocol::AddPlanResponse&) = 0;
  virtual bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest&,
                          view_plugin_protocol::UpdatePlanResponse&) = 0;
  virtual bool DeletePlan(const view_plugin_protocol::DeletePlanResquest&,
                          view_plugin_protocol::DeletePlanResponse&) = 0;
  virtual bool RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest&,
                              view_plugin_protocol::RestoreDeletedResponse&) = 0;
  virtual bool GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest&,
                             view_plugin_protocol::GetPlanDetailResponse&) = 0;
  virtual bool AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam&,
                          view_plugin_protocol::AddPlanLogResponseParam&) = 0;
  virtual bool SearchPlan(const view_plugin_protocol::SearchPlanRequest&,
                          view_plugin_protocol::SearchPlanResponse&) = 0;
  virtual bool GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest&,
                                   view_plugin_protocol::GetClientDefaultViewConfigResponse&) = 0;
  virtual bool SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest&,
                                   view_plugin_protocol::ClienDefaultViewConfigReponse&) = 0;
  virtual bool GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest&,
                             view_plugin_protocol::GetPlanConfigResponse&) = 0;
  virtual bool GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest&,
                              view_plugin_protocol::GetCurrentUserResponse&) = 0;
  virtual bool GetAllUserInfo(const view_plugin_protocol::UserRequestInfo&,
                              view_plugin_protocol::UserResponseInfo&) = 0;
  virtual bool ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo&,
                              view_plugin_protocol::ShareViewResponseInfo&) = 0;
  virtual bool IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest&,
                                     view_plugin_protocol::ClienInitViewDataResponse&) = 0;
  virtual bool IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest&,
                                view_plugin_protocol::ClienInitViewDataResponse&) = 0;
  virtual bool IsViewResourceDownFinish() = 0;
  virtual void ClearViewData() = 0;
  virtual void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                          const view_plugin_protocol::ViewObserverInfo& info) = 0;
  virtual bool CheckControlPermission(int code) = 0;
  virtual bool GetPresets(const ptz_plugin_protocol::GetPresetRequest&, ptz_plugin_protocol::GetPresetResponse&) = 0;
  virtual bool GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest&,
                                play_plugin_protocol::GetStreamAbiResponse&) = 0;

  /// False with a text from services that do not count.
  virtual bool CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest&,
                               view_plugin_protocol::CountBelowGroupResponse&);

  /// The site's regions and cameras as they are now, in no particular order. A camera may name a region that is not
  /// there. The next two are about the current user. All three answer false with a text in `error`, as do services
  /// without cameras.
  virtual bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                             std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error);
  virtual bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error);
  virtual bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error);

  /// Turns a camera to one of its presets. False with a text from services that turn none.
  virtual bool GotoPreset(const ptz_plugin_protocol::GotoPresetRequest&, ptz_plugin_protocol::GotoPresetResponse&);
  /// How to get the pictures of these cameras, for any user who is logged in. One that does not exist is left out.
  virtual bool GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList& access,
                               std::string* error);
  /// These take the right to configure the site, and are one transaction each.
  virtual bool ChangeCameras(const CameraChanges& changes, CameraChangesMade& made, std::string* error);
  virtual bool SetCameraAuthority(const std::string& pem, std::string* error);
  virtual bool GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing& showing, std::string* error);

  /// Who may log in, and what each may do. These two take the right to configure the site, too; the second is one
  /// transaction.
  virtual bool GetSiteUsers(SiteUsers& users, std::string* error);
  virtual bool ChangeSiteUsers(const SiteUserChanges& changes, std::string* error);

  /// Identity of the site behind the services; empty when there is none. A decorator hands its target's on.
  virtual std::string StationId() const { return {}; }
};

/// Puts `services` behind the plug-in manager's singletons. A null pointer begins the host's closing: from then on
/// every call of the singletons returns false with a text for the user. Calls in flight keep the old services alive
/// until they return. Thread: any.
TARN_HOST_EXPORT void InstallHostServices(std::shared_ptr<IHostServices> services);

/// What InstallHostServices() last installed; null before that and while the host closes. Thread: any.
TARN_HOST_EXPORT std::shared_ptr<IHostServices> InstalledHostServices();

}  // namespace TarnHost
