#pragma once

#include <QVector>

#include "ResourceTreeKit/camera_item_info.h"

class QMimeData;
class QPixmap;
class QWidget;

namespace ResourceTreeKit {

/// What a drag of these cameras carries, under "_drag_json_data_".
QMimeData* MakeCameraDragData(const QVector<CCameraItemInfo>& cameras);

/// The picture of these cameras under the cursor, in the colours of the widget.
QPixmap MakeCameraDragPicture(const QVector<CCameraItemInfo>& cameras, const QWidget* widget);

}  // namespace ResourceTreeKit
