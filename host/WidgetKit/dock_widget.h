#pragma once

#include "WidgetKit/slide_out_data.h"
#include "host_export.h"

namespace WidgetKit {

/// Slides the widget out over its window, above all else in it. The dock is a child of the window, follows its size and
/// gives the focus to the widget; Esc does not close it, because the widget may hold unsaved input. A widget that is
/// already shown stays where it is; without a window to stand in nothing happens. Thread: GUI.
TARN_HOST_EXPORT void ShowDockWidget(const CSlideOutData& data);
/// Slides it back. Nothing for a widget that is not shown. The widget goes back to the parent it came from, hidden.
/// Thread: GUI.
TARN_HOST_EXPORT void HideDockWidget(QWidget* widget);
/// Whether the widget is out, or on its way out; false for null. Thread: GUI.
TARN_HOST_EXPORT bool IsDockWidgetShown(const QWidget* widget);

}  // namespace WidgetKit
