#include "view_config_manager.h"

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnUIDataController/skin_loader.h"

namespace TarnPlanView {

struct CViewConfigManager::Switches {
  bool load_all = false;
  bool create_under_root = false;
  bool enable_search = true;
  bool enable_drag = true;
  bool delete_with_children = true;
  bool timed_play = false;
  bool only_camera = false;
  bool show_plan_or_view = false;
  bool move_public_private = false;
  bool dark_skin = true;
  bool add_from_favorite = false;
  bool smooth_stream = true;
  bool creation_info = false;
  bool save_single_cycle = false;
  bool thumbnail = true;
  bool support_plan = true;
  bool group_cycle = true;

  void Take(const view_plugin_protocol::GetPlanConfigResponse& config) {
    load_all = config.load_all;
    create_under_root = config.create_under_root;
    enable_search = config.enable_search;
    enable_drag = config.enable_drag;
    delete_with_children = config.delete_with_children;
    show_plan_or_view = config.show_mode == 1;
    timed_play = config.timed_play;
    only_camera = config.only_camera;
    move_public_private = config.move_public_private;
    add_from_favorite = config.add_from_favorite;
    smooth_stream = config.smooth_stream;
    creation_info = config.creation_info;
    save_single_cycle = config.save_single_cycle;
    thumbnail = config.thumbnail;
    group_cycle = config.group_cycle;
  }
};

CViewConfigManager::CViewConfigManager() : switches_(std::make_shared<Switches>()) {
  view_plugin_protocol::GetPlanConfigResponse config;
  if (LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanConfig({}, config)) {
    switches_->Take(config);
  }
  switches_->dark_skin = tarn_ui_data_controller::CSkinLoader::Instance().GetCurrentSkin() == QLatin1String("redblack");
}

CViewConfigManager::~CViewConfigManager() = default;

bool CViewConfigManager::IsLoadAll() const {
  return switches_->load_all;
}
bool CViewConfigManager::CreatePlanUnderRootNode() const {
  return switches_->create_under_root;
}
bool CViewConfigManager::IsEnableSearch() const {
  return switches_->enable_search;
}
bool CViewConfigManager::IsEnableDrag() const {
  return switches_->enable_drag;
}
bool CViewConfigManager::IsSupportDelPlanWithChildren() const {
  return switches_->delete_with_children;
}
bool CViewConfigManager::IsSupportTimedPlay() const {
  return switches_->timed_play;
}
bool CViewConfigManager::OnlyCamera() const {
  return switches_->only_camera;
}
bool CViewConfigManager::IsShowPlanOrView() const {
  return switches_->show_plan_or_view;
}
bool CViewConfigManager::MovePlanBetweenPublicAndPrivate() const {
  return switches_->move_public_private;
}
bool CViewConfigManager::IsDarkSkin() const {
  return switches_->dark_skin;
}
bool CViewConfigManager::SupportAddCameraFromFavorite() const {
  return switches_->add_from_favorite;
}
bool CViewConfigManager::SupportSmoothStream() const {
  return switches_->smooth_stream;
}
bool CViewConfigManager::ShowCreationInfo() const {
  return switches_->creation_info;
}
bool CViewConfigManager::IsSupportSaveSingleCycle() const {
  return switches_->save_single_cycle;
}
bool CViewConfigManager::SupportThumbnail() const {
  return switches_->thumbnail;
}
bool CViewConfigManager::IsSupportPlan() const {
  return switches_->support_plan;
}
bool CViewConfigManager::IsSupportPlanGroupCycle() const {
  return switches_->group_cycle;
}

void CViewConfigManager::SetIsSupportPlan(bool support) {
  switches_->support_plan = support;
}

bool CViewConfigManager::event(QEvent* event) {
  return QObject::event(event);
}

}  // namespace TarnPlanView
