#include "wall/drag_payload.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

#include "MarUIControl/string_conversion.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

// The largest honest payload is a region of some thousand cameras; parsing more would hold the drag.
constexpr int kMostBytes = 1024 * 1024;

QString PayloadType() {
  return QStringLiteral("_drag_json_data_");
}

QString WindowType() {
  return QStringLiteral("application/x-tarn-wall-window");
}

std::optional<WallCamera> CameraOf(const QJsonObject& source, const QString& station_id) {
  const QString code = source.value(QLatin1String("_source_id_")).toString();
  const QString name =
      source.value(QLatin1String("_normal_resource")).toObject().value(QLatin1String("name")).toString();
  const bool is_camera = source.value(QLatin1String("_source_type_")).toString() == QLatin1String("_type_camera_");
  if (!is_camera || code.isEmpty() || source.value(QLatin1String("_station_id_")).toString() != station_id) {
    return std::nullopt;
  }
  return WallCamera{QStringToString(code), QStringToString(name)};
}

}  // namespace

QJsonArray SourcesOfDrag(const QMimeData* mime) {
  if (!mime || !mime->hasFormat(PayloadType())) {
    return QJsonArray();
  }
  const QByteArray payload = mime->data(PayloadType());
  if (payload.size() > kMostBytes) {
    return QJsonArray();
  }
  return QJsonDocument::fromJson(payload).array();
}

QVector<WallCamera> CamerasOf(const QJsonArray& sources, const QString& station_id) {
  QVector<WallCamera> cameras;
  for (const QJsonValue& source : sources) {
    const auto camera = CameraOf(source.toObject(), station_id);
    if (!camera) {
      return {};
    }
    cameras.append(*camera);
  }
  return cameras;
}

QMimeData* MakeWindowDrag(const DraggedWindow& window, const WallCamera& camera, const QString& station_id) {
  const QJsonObject source{
      {QStringLiteral("_source_id_"), StringToQString(camera.code)},
      {QStringLiteral("_station_id_"), station_id},
      {QStringLiteral("_source_type_"), QStringLiteral("_type_camera_")},
      {QStringLiteral("_normal_resource"), QJsonObject{{QStringLiteral("name"), StringToQString(camera.name)}}}};
  auto* data = new QMimeData;
  data->setData(PayloadType(), QJsonDocument(QJsonArray{source}).toJson(QJsonDocument::Compact));
  data->setData(WindowType(), QByteArray::number(reinterpret_cast<quintptr>(window.wall)) + ' ' +
                                  QByteArray::number(window.window_no));
  return data;
}

// The address only says whether it is the same wall; a drag from another program names none that is.
std::optional<DraggedWindow> WindowOfDrag(const QMimeData* mime) {
  if (!mime || !mime->hasFormat(WindowType())) {
    return std::nullopt;
  }
  const QList<QByteArray> parts = mime->data(WindowType()).split(' ');
  DraggedWindow window;
  window.wall = reinterpret_cast<const void*>(static_cast<quintptr>(parts.value(0).toULongLong()));
  window.window_no = parts.value(1).toInt();
  return window;
}

}  // namespace TarnClient
