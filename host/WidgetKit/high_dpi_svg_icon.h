#pragma once

#include <QIcon>
#include <QSize>
#include <QString>

#include "host_export.h"

namespace WidgetKit {

/// Icon of two SVG resources: `normal` for mode Normal, `selected` for mode Selected. Sharp at every device pixel
/// ratio. An empty size takes each file's own. A file that is not there
/// leaves its mode without a picture. Thread: GUI.
TARN_HOST_EXPORT QIcon GetHighDpiSvgIcon(const QString& normal, const QString& selected, const QSize& size);

}  // namespace WidgetKit
