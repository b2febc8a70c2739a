#pragma once

#include <QImage>
#include <QSize>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnPlanView {

/// A page as its windows and the names of what they hold, for plans without a thumbnail. `size` is in logical pixels.
/// Thread: GUI.
QImage PagePicture(const view_plugin_protocol::PlanPage& page, const QSize& size, qreal device_pixel_ratio);

}  // namespace TarnPlanView
