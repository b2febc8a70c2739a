#pragma once

#include <QJsonArray>
#include <QVector>
#include <optional>

#include "wall/arrangement.h"

class QMimeData;

namespace TarnClient {

/// The objects of a drag as the site's trees make them; empty for any other, and for one that is too large to be
/// honest.
QJsonArray SourcesOfDrag(const QMimeData* mime);

/// The cameras among the objects of a drag, in order; empty unless all of them are cameras of the site `station_id`.
QVector<WallCamera> CamerasOf(const QJsonArray& sources, const QString& station_id);

/// A window of a wall under the mouse.
struct DraggedWindow {
  const void* wall = nullptr;
  int window_no = 0;
};

/// What a drag of a window carries: itself, and its camera for all that take cameras.
QMimeData* MakeWindowDrag(const DraggedWindow& window, const WallCamera& camera, const QString& station_id);
/// Empty for a drag that carries none.
std::optional<DraggedWindow> WindowOfDrag(const QMimeData* mime);

}  // namespace TarnClient
