#pragma once

#include "TarnUIDataController/slide_widget_pos_rule.h"
#include "host_export.h"

namespace tarn_ui_data_controller {

/// Along the left edge of the widget attached to, over its whole height: beside the panel that opened the dock.
/// Thread: GUI.
class TARN_HOST_EXPORT CDownloadSlideWidgetPosRule : public CSlideWidgetPosRule {
 public:
  /// Attached to nothing.
  CDownloadSlideWidgetPosRule();
  ~CDownloadSlideWidgetPosRule() override;

  QRect Place(int width) const override;
};

}  // namespace tarn_ui_data_controller
