#pragma once

#include <list>
#include <string>
#include <vector>

#include "LyraPluginManager/play_plugin_protocol.h"
#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/region_item_info.h"
#include "store/store_runner.h"

namespace TarnHost::Store {

/// The service's calls about what a site has besides plans: users and their rights, switches, cameras. Throws
/// CStoreError. Thread: any.
class CSiteOperations {
 public:
  explicit CSiteOperations(CStoreRunner& runner) : runner_(runner) {}

  void GetPlanConfig(const view_plugin_protocol::GetPlanConfigRequest& request,
                     view_plugin_protocol::GetPlanConfigResponse* response);
  void GetCurrentUser(const view_plugin_protocol::GetCurrentUserRequest& request,
                      view_plugin_protocol::GetCurrentUserResponse* response);
  void GetAllUserInfo(const view_plugin_protocol::UserRequestInfo& request,
                      view_plugin_protocol::UserResponseInfo* response);
  /// The first user with all rights, else the first of all; empty when there is none.
  QString DefaultUser() const;
  bool HasRight(int code) const;

  void GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                  ptz_plugin_protocol::GetPresetResponse* response);
  void GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                        play_plugin_protocol::GetStreamAbiResponse* response);
  void GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>* regions,
                     std::vector<ResourceTreeKit::CCameraItemInfo>* cameras);
  void GetFavoriteCameras(std::vector<std::string>* index_codes);
  void SetFavoriteCamera(const std::string& index_code, bool favorite);

  void GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                  ptz_plugin_protocol::GotoPresetResponse* response);
  void GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList* access);
  CameraChangesMade ChangeCameras(const CameraChanges& changes);
  void SetCameraAuthority(const std::string& pem);
  SiteUsers GetSiteUsers();
  void ChangeSiteUsers(const SiteUserChanges& changes);
  void GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing* showing);

 private:
  std::list<ptz_plugin_protocol::PresetInfo> PresetsOf(const std::string& camera_code);

  CStoreRunner& runner_;
};

}  // namespace TarnHost::Store
