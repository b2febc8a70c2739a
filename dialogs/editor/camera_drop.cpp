#include "camera_drop.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

#include "MarUIControl/string_conversion.h"
#include "TarnConfiguration/view_config_interface.h"

namespace TarnPlanView {

namespace {

// A region of ten thousand cameras with long names; more would hold the drag while it is read.
constexpr int kMostBytes = 8 * 1024 * 1024;

QString Text(const QJsonObject& object, const char* key) {
  return object.value(QLatin1String(key)).toString();
}

QString StationId() {
  if (const auto config = TarnConfiguration::CreateViewConfigInterface()) {
    return MarUIControl::StringToQString(config->GetStationId());
  }
  return QString();
}

}  // namespace

std::optional<QVector<DraftCamera>> ReadCameraDrop(const QMimeData* mime) {
  if (!mime) {
    return std::nullopt;
  }
  const QByteArray payload = mime->data(QStringLiteral("_drag_json_data_"));
  if (payload.isEmpty() || payload.size() > kMostBytes) {
    return std::nullopt;
  }
  const QString station = StationId();
  QVector<DraftCamera> cameras;
  for (const QJsonValue& value : QJsonDocument::fromJson(payload).array()) {
    const QJsonObject source = value.toObject();
    const DraftCamera camera{Text(source, "_source_id_"),
                             Text(source.value(QLatin1String("_normal_resource")).toObject(), "name")};
    if (Text(source, "_source_type_") != QLatin1String("_type_camera_") || camera.index_code.isEmpty() ||
        Text(source, "_station_id_") != station) {
      return std::nullopt;
    }
    cameras.append(camera);
  }
  if (cameras.isEmpty()) {
    return std::nullopt;
  }
  return cameras;
}

}  // namespace TarnPlanView
