#include "ResourceTreeKit/camera_drag.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QPixmap>
#include <QWidget>

#include "TarnHost/host_services.h"
#include "WidgetKit/drag.h"

namespace ResourceTreeKit {

namespace {

QString Caption(const QVector<CCameraItemInfo>& cameras) {
  if (cameras.size() == 1) {
    return QString::fromStdString(cameras.front().name);
  }
  return QCoreApplication::translate("ResourceTreeKit", "%1 cameras").arg(cameras.size());
}

}  // namespace

QMimeData* MakeCameraDragData(const QVector<CCameraItemInfo>& cameras) {
  const auto services = TarnHost::InstalledHostServices();
  const QString station = services ? QString::fromStdString(services->StationId()) : QString();
  QJsonArray list;
  for (const CCameraItemInfo& camera : cameras) {
    list.append(QJsonObject{{QStringLiteral("_source_id_"), QString::fromStdString(camera.index_code)},
                            {QStringLiteral("_station_id_"), station},
                            {QStringLiteral("_source_type_"), QStringLiteral("_type_camera_")},
                            {QStringLiteral("_normal_resource"),
                             QJsonObject{{QStringLiteral("name"), QString::fromStdString(camera.name)}}}});
  }
  auto* data = new QMimeData;
  data->setData(QStringLiteral("_drag_json_data_"), QJsonDocument(list).toJson(QJsonDocument::Compact));
  return data;
}

QPixmap MakeCameraDragPicture(const QVector<CCameraItemInfo>& cameras, const QWidget* widget) {
  return WidgetKit::CDrag::Caption(Caption(cameras), widget);
}

}  // namespace ResourceTreeKit
