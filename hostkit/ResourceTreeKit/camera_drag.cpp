#include "ResourceTreeKit/camera_drag.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include "TarnHost/host_services.h"

namespace ResourceTreeKit {

namespace {

constexpr int kPadding = 8;
constexpr int kMostWidth = 240;

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
  const QFontMetrics metrics = widget->fontMetrics();
  const QString text = metrics.elidedText(Caption(cameras), Qt::ElideMiddle, kMostWidth);
  const QSize size(metrics.horizontalAdvance(text) + 2 * kPadding, metrics.height() + kPadding);
  QPixmap picture(size * widget->devicePixelRatioF());
  picture.setDevicePixelRatio(widget->devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(widget->font());
  painter.setBrush(widget->palette().color(QPalette::Highlight));
  painter.setPen(Qt::NoPen);
  painter.drawRoundedRect(QRect(QPoint(), size), 4, 4);
  painter.setPen(widget->palette().color(QPalette::HighlightedText));
  painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, text);
  return picture;
}

}  // namespace ResourceTreeKit
