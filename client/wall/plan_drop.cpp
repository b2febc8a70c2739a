#include "wall/plan_drop.h"

#include <QJsonObject>

namespace TarnClient {

namespace {

QString Text(const QJsonObject& object, const char* key) {
  return object.value(QLatin1String(key)).toString();
}

std::optional<PlanDrop::Kind> KindOf(const QString& source_type) {
  if (source_type == QLatin1String("_type_view_")) {
    return PlanDrop::Kind::Plan;
  }
  if (source_type == QLatin1String("_type_view_group_")) {
    return PlanDrop::Kind::Group;
  }
  return std::nullopt;
}

}  // namespace

std::optional<PlanDrop> PlanDrop::Read(const QJsonArray& sources, const QString& station_id) {
  const QJsonObject source = sources.size() == 1 ? sources.first().toObject() : QJsonObject();
  const auto kind = KindOf(Text(source, "_source_type_"));
  const QString code = Text(source, "_source_id_");
  if (!kind || code.isEmpty() || Text(source, "_station_id_") != station_id) {
    return std::nullopt;
  }
  PlanDrop drop;
  drop.kind = *kind;
  drop.code = code;
  drop.name = Text(source.value(QLatin1String("_normal_resource")).toObject(), "name");
  return drop;
}

}  // namespace TarnClient
