#pragma once

#include <QVector>

#include "ResourceTreeKit/camera_model.h"

namespace ResourceTreeKit {

/// The camera of the row, or all below it, in the order shown. Thread: GUI.
QVector<CCameraItemInfo> CamerasBelow(const CCameraModel& model, const QModelIndex& row);

/// The cameras of all these rows in the order shown, each once, though it may be among the favourites and in its
/// region, too. Thread: GUI.
QVector<CCameraItemInfo> CamerasOf(const CCameraModel& model, const QModelIndexList& rows);

}  // namespace ResourceTreeKit
