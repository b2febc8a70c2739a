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

/// What stands behind the plug-in manager's singletons: the plan store, or a decorator around it. What the singletons
/// have, too, is as there. Thread: any, several at once.
class TARN_HOST_EXPORT IHostServices {
 public:
  virtual ~IHostServices() = default;

  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanGroups
  virtual bool GetPlanGroups(const view_plugin_protocol::GetPlanGroupsRequest&,
                             view_plugin_protocol::GetPlanGroupsResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetPlansInGroup
  virtual bool GetPlansInGroup(const view_plugin_protocol::GetPlansInGroupRequest&,
                               view_plugin_protocol::GetPlansInGroupResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::AddPlanGroup
  virtual bool AddPlanGroup(const view_plugin_protocol::AddPlanGroupRequest&,
                            view_plugin_protocol::AddPlanGroupResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::UpdatePlanGroup
  virtual bool UpdatePlanGroup(const view_plugin_protocol::UpdatePlanGroupRequest&,
                               view_plugin_protocol::UpdatePlanGroupResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::DeletePlanGroup
  virtual bool DeletePlanGroup(const view_plugin_protocol::DeletePlanGroupRequest&,
                               view_plugin_protocol::DeletePlanGroupResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::AddPlan
  virtual bool AddPlan(const view_plugin_protocol::AddPlanRequest&, view_plugin_protocol::AddPlanResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::UpdatePlan
  virtual bool UpdatePlan(const view_plugin_protocol::UpdatePlanRequest&,
                          view_plugin_protocol::UpdatePlanResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::DeletePlan
  virtual bool DeletePlan(const view_plugin_protocol::DeletePlanResquest&,
                          view_plugin_protocol::DeletePlanResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::RestoreDeleted
  virtual bool RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest&,
                              view_plugin_protocol::RestoreDeletedResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail
  virtual bool GetPlanDetail(const view_plugin_protocol::GetPlanDetailRequest&,
                             view_plugin_protocol::GetPlanDetailResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::AddPlanLog
  virtual bool AddPlanLog(const view_plugin_protocol::AddPlanLogRequestParam&,
                          view_plugin_protocol::AddPlanLogResponseParam&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::SearchPlan
  virtual bool SearchPlan(const view_plugin_protocol::SearchPlanRequest&,
                          view_plugin_protocol::SearchPlanResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetClientViewConfig
  virtual bool GetClientViewConfig(const view_plugin_protocol::GetClientDefaultViewConfigRequest&,
                                   view_plugin_protocol::GetClientDefaultViewConfigResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::SetClientViewConfig
  virtual bool SetClientViewConfig(const view_plugin_protocol::ClienDefaultViewConfigRequest&,
                                   view_plugin_protocol::ClienDefaultViewConfigReponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanConfig
  virtual bool GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest&,
                             view_plugin_protocol::GetPlanConfigResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetCurrentUser
  virtual bool GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest&,
                              view_plugin_protocol::GetCurrentUserResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::GetAllUserInfo
  virtual bool GetAllUserInfo(const view_plugin_protocol::UserRequestInfo&,
                              view_plugin_protocol::UserResponseInfo&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::ViewShareUsers
  virtual bool ViewShareUsers(const view_plugin_protocol::ViewShareResquestInfo&,
                              view_plugin_protocol::ShareViewResponseInfo&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::IsInitViewGroupFinish
  virtual bool IsInitViewGroupFinish(const view_plugin_protocol::ClienInitViewDataRequest&,
                                     view_plugin_protocol::ClienInitViewDataResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::IsInitViewFinish
  virtual bool IsInitViewFinish(const view_plugin_protocol::ClienInitViewDataRequest&,
                                view_plugin_protocol::ClienInitViewDataResponse&) = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::IsViewResourceDownFinish
  virtual bool IsViewResourceDownFinish() = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::ClearViewData
  virtual void ClearViewData() = 0;
  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::ViewRegisterResourceUpdate
  virtual void ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                          const view_plugin_protocol::ViewObserverInfo& info) = 0;
  /// \copydoc LyraPluginManager::CResourceBusinessInterfaceMgr::CheckControlPermission
  virtual bool CheckControlPermission(int code) = 0;
  /// \copydoc LyraPluginManager::CPTZBusinessInterfaceMgr::GetPresets
  virtual bool GetPresets(const ptz_plugin_protocol::GetPresetRequest&, ptz_plugin_protocol::GetPresetResponse&) = 0;
  /// \copydoc LyraPluginManager::CPreviewBusinessInterfaceMgr::GetStreamAbility
  virtual bool GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest&,
                                play_plugin_protocol::GetStreamAbiResponse&) = 0;

  /// \copydoc LyraPluginManager::CViewBusinessInterfaceMgr::CountBelowGroup
  virtual bool CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest&,
                               view_plugin_protocol::CountBelowGroupResponse&);

  /// The site's regions and cameras as they are now, in no particular order. A camera may name a region that is not
  /// there. False with a text for the user in `error`, which is never null, as in all calls below that have one:
  /// services without cameras or users answer the calls about them so.
  virtual bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                             std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error);
  /// Codes of the cameras that are favourites of the current user, in no particular order.
  virtual bool GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error);
  /// Makes a camera a favourite of the current user, or none any more; true also where it is so already. No camera that
  /// is not there becomes one.
  virtual bool SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error);

  /// Turns a camera to one of its presets. False with a text from services that turn none. A store only looks whether
  /// the camera has it: the device is the client's to ask.
  virtual bool GotoPreset(const ptz_plugin_protocol::GotoPresetRequest&, ptz_plugin_protocol::GotoPresetResponse&);
  /// How to get the pictures of these cameras, for any user who is logged in. One that does not exist is left out.
  virtual bool GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList& access,
                               std::string* error);
  /// Changes regions and cameras in one transaction. Takes the right to configure the site, as do the calls below. What
  /// breaks a rule of CameraChanges or names what is not there is refused, and nothing is changed.
  virtual bool ChangeCameras(const CameraChanges& changes, CameraChangesMade& made, std::string* error);
  /// Replaces the certificates (PEM) that vouch for cameras; empty: those that the system trusts. In one transaction.
  virtual bool SetCameraAuthority(const std::string& pem, std::string* error);
  /// Which plans show one of these cameras: for what is said before a camera is removed.
  virtual bool GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing& showing, std::string* error);

  /// Who may log in, and what each may do. Passwords are not among it.
  virtual bool GetSiteUsers(SiteUsers& users, std::string* error);
  /// Changes that in one transaction, by the rules of SiteUserChanges; reckons for a part of a second for each
  /// password. Where users have roles at a server it takes the account that owns the tables.
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
