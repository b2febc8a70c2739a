#pragma once

#include <QJsonArray>
#include <QString>
#include <optional>

namespace TarnClient {

/// What a drag from a plan panel carries to the wall.
struct PlanDrop {
  enum class Kind { Plan, Group };
  Kind kind = Kind::Plan;
  QString code, name;

  /// Of the objects of a drag; empty unless they are exactly one plan or group of the site `station_id`.
  static std::optional<PlanDrop> Read(const QJsonArray& sources, const QString& station_id);
};

}  // namespace TarnClient
