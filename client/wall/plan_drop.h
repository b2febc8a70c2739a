#pragma once

#include <QString>
#include <optional>

class QMimeData;

namespace TarnClient {

/// What a drag from a plan panel carries to the wall.
struct PlanDrop {
  enum class Kind { Plan, Group };
  Kind kind = Kind::Plan;
  QString code, name;

  /// Empty for anything that is not exactly one plan or group of the site `station_id`.
  static std::optional<PlanDrop> Read(const QMimeData* mime, const QString& station_id);
};

}  // namespace TarnClient
