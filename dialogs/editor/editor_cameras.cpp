#include "editor_cameras.h"

#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "WidgetKit/new_search_line.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using ResourceTreeKit::CCameraItemInfo;
using ResourceTreeKit::CCameraTree;

namespace {

DraftCamera FromSite(const CCameraItemInfo& camera) {
  return {MarUIControl::StringToQString(camera.index_code), MarUIControl::StringToQString(camera.name)};
}

}  // namespace

CEditorCameras::CEditorCameras(QWidget* parent) : CCameraFinder(parent) {
  Search()->setObjectName(QStringLiteral("camera_search"));
  Search()->setPlaceholderText(tr("Search cameras"));
  Search()->setAccessibleName(tr("Search cameras"));
  Search()->setToolTip(tr("Search cameras and regions (Ctrl+F). Return takes the only hit."));
  Tree()->setObjectName(QStringLiteral("camera_tree"));
  Tree()->setAccessibleName(tr("Cameras"));
  Tree()->setToolTip(tr("Double click or Return puts a camera into the current window, Ctrl+Return a whole region"));
  Tree()->SetFavoritesVisible(CViewConfigManager::Instance().SupportAddCameraFromFavorite());
  connect(this, &CCameraFinder::SignalCameraChosen, this,
          [this](const CCameraItemInfo& camera) { Q_EMIT SignalCameraWanted(FromSite(camera)); });
  connect(this, &CCameraFinder::SignalCamerasChosen, this, &CEditorCameras::OnCameras);
  connect(Tree(), &CCameraTree::SignalLoaded, this, &CEditorCameras::SignalCamerasChanged);
}

void CEditorCameras::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  // A tree of a part of the site cannot say which cameras the site has.
  whole_site_ = param.root_region_index_code.empty() && param.show_offline;
  Tree()->SetLogicNodeParam(param);
}

void CEditorCameras::Reload() {
  doubted_.clear();
  if (Tree()->IsLoaded()) {  // else the tree itself does, once it is shown
    Tree()->Reload();
  }
}

void CEditorCameras::Doubt(const QString& index_code) {
  if (!doubted_.contains(index_code) && Tree()->IsLoaded()) {
    doubted_.insert(index_code);
    Tree()->Reload();
  }
}

std::optional<CWindowText::SiteCamera> CEditorCameras::Find(const std::string& index_code) const {
  if (!Tree()->IsLoaded()) {
    return std::nullopt;
  }
  const CCameraItemInfo camera = Tree()->FindCamera(index_code);
  if (camera.index_code.empty()) {
    if (!whole_site_) {
      return std::nullopt;
    }
    return CWindowText::SiteCamera();
  }
  return CWindowText::SiteCamera{MarUIControl::StringToQString(camera.name), camera.online};
}

void CEditorCameras::OnCameras(const QVector<CCameraItemInfo>& cameras) {
  QVector<DraftCamera> chosen;
  for (const CCameraItemInfo& camera : cameras) {
    chosen.append(FromSite(camera));
  }
  Q_EMIT SignalCamerasWanted(chosen);
}

}  // namespace TarnPlanView
