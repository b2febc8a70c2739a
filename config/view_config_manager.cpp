#include "view_config_manager.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "current_skin.h"

namespace TarnPlanView {

struct CViewConfigManager::Switches {
  view_plugin_protocol::GetPlanConfigResponse host;
  bool dark_skin = true;
  bool support_plan = true;
};

CViewConfigManager::CViewConfigManager() : switches_(std::make_shared<Switches>()) {
  view_plugin_protocol::GetPlanConfigResponse config;
  if (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanConfig({}, config)) {
    switches_->host = config;
  }
  switches_->dark_skin = IsCurrentSkinDark();
}

CViewConfigManager::~CViewConfigManager() = default;

const view_plugin_protocol::GetPlanConfigResponse& CViewConfigManager::Host() const {
  return switches_->host;
}
bool CViewConfigManager::IsLoadAll() const {
  return switches_->host.load_all;
}
bool CViewConfigManager::CreatePlanUnderRootNode() const {
  return switches_->host.create_under_root;
}
bool CViewConfigManager::IsEnableSearch() const {
  return switches_->host.enable_search;
}
bool CViewConfigManager::IsEnableDrag() const {
  return switches_->host.enable_drag;
}
bool CViewConfigManager::IsSupportDelPlanWithChildren() const {
  return switches_->host.delete_with_children;
}
bool CViewConfigManager::IsSupportTimedPlay() const {
  return switches_->host.timed_play;
}
bool CViewConfigManager::OnlyCamera() const {
  return switches_->host.only_camera;
}
bool CViewConfigManager::IsShowPlanOrView() const {
  return switches_->host.show_mode == 1;
}
bool CViewConfigManager::MovePlanBetweenPublicAndPrivate() const {
  return switches_->host.move_public_private;
}
bool CViewConfigManager::IsDarkSkin() const {
  return switches_->dark_skin;
}
bool CViewConfigManager::SupportAddCameraFromFavorite() const {
  return switches_->host.add_from_favorite;
}
bool CViewConfigManager::SupportSmoothStream() const {
  return switches_->host.smooth_stream;
}
bool CViewConfigManager::ShowCreationInfo() const {
  return switches_->host.creation_info;
}
bool CViewConfigManager::IsSupportSaveSingleCycle() const {
  return switches_->host.save_single_cycle;
}
bool CViewConfigManager::SupportThumbnail() const {
  return switches_->host.thumbnail;
}
bool CViewConfigManager::IsSupportPlan() const {
  return switches_->support_plan;
}
bool CViewConfigManager::IsSupportPlanGroupCycle() const {
  return switches_->host.group_cycle;
}

void CViewConfigManager::SetIsSupportPlan(bool support) {
  switches_->support_plan = support;
}

bool CViewConfigManager::event(QEvent* event) {
  return QObject::event(event);
}

}  // namespace TarnPlanView
