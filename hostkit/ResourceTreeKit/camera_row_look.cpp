#include "ResourceTreeKit/camera_row_look.h"

#include <QColor>

#include "MarUIControl/plain_tool_tip.h"
#include "ResourceTreeKit/camera_model.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/high_dpi_svg_icon.h"

namespace ResourceTreeKit {

namespace {

QIcon MakeIcon(const char* folder, const char* name) {
  const QString path = QString::fromLatin1(folder) + QString::fromLatin1(name);
  return WidgetKit::GetHighDpiSvgIcon(path + QStringLiteral(".svg"), path + QStringLiteral("_sel.svg"), QSize(20, 20));
}

QIcon MakeCameraIcon(const QString& name) {
  return WidgetKit::GetHighDpiSvgIcon(
      QStringLiteral(":/Bolt/Public/TreePublic/Images/Public/TreePublic/%1.svg").arg(name),
      QStringLiteral(":/TarnHost/icons/%1_sel.svg").arg(name), QSize(20, 20));
}

// An online camera has the view's own colour.
QVariant ColorOf(const CCameraItemInfo& camera) {
  if (camera.online) {
    return {};
  }
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QStringLiteral("text_muted"));
}

QString SpokenName(const QString& name, const CCameraItemInfo& camera, bool favorite) {
  QString spoken = name;
  if (!camera.online) {
    spoken = CCameraModel::tr("%1, offline").arg(spoken);
  }
  if (favorite) {
    spoken = CCameraModel::tr("%1, favorite").arg(spoken);
  }
  return spoken;
}

}  // namespace

CCameraRowLook::CCameraRowLook()
    : online_(MakeCameraIcon(QStringLiteral("tree_main_camera"))),
      offline_(MakeCameraIcon(QStringLiteral("tree_main_camera_offline"))),
      region_(MakeIcon(":/Bolt/Public/TreePublic/Images/Public/TreePublic/", "tree_main_group")),
      favorites_(MakeIcon(":/TarnHost/icons/", "favorite")) {}

QVariant CCameraRowLook::OfFavorites(int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return CCameraModel::tr("Favorites");
    case Qt::DecorationRole:
      return favorites_;
    default:
      return {};
  }
}

QVariant CCameraRowLook::OfRegion(const CCameraContent::Node& node, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return node.name;
    case Qt::DecorationRole:
      return region_;
    case CCameraModel::CodeRole:
      return node.code;
    default:
      return {};
  }
}

QVariant CCameraRowLook::OfCamera(const CCameraContent::Node& node, const CCameraItemInfo& camera,
                                  std::optional<bool> favorite, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return node.name;
    case Qt::DecorationRole:
      return CameraIcon(camera);
    case Qt::ForegroundRole:
      return ColorOf(camera);
    case Qt::AccessibleTextRole:
      return SpokenName(node.name, camera, favorite.value_or(false));
    case Qt::ToolTipRole:
      return MarUIControl::PlainToolTip(SpokenName(node.name, camera, favorite.value_or(false)));
    case CCameraModel::FavoriteRole:
      if (!favorite) {
        return {};
      }
      return *favorite;
    case CCameraModel::OnlineRole:
      return camera.online;
    case CCameraModel::CodeRole:
      return node.code;
    default:
      return {};
  }
}

QIcon CCameraRowLook::CameraIcon(const CCameraItemInfo& camera) const {
  if (camera.online) {
    return online_;
  }
  return offline_;
}

}  // namespace ResourceTreeKit
