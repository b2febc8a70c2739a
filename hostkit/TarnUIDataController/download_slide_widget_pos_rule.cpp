#include "TarnUIDataController/download_slide_widget_pos_rule.h"

namespace tarn_ui_data_controller {

CDownloadSlideWidgetPosRule::CDownloadSlideWidgetPosRule() = default;

CDownloadSlideWidgetPosRule::~CDownloadSlideWidgetPosRule() = default;

QRect CDownloadSlideWidgetPosRule::Place(int width) const {
  const QWidget* beside = PosAttachTo();
  if (!beside || !beside->isVisible()) {
    return {};
  }
  const QWidget* window = beside->window();
  const QPoint corner = beside->mapTo(window, QPoint());
  return QRect(corner, QSize(qMin(width, window->width() - corner.x()), beside->height()));
}

}  // namespace tarn_ui_data_controller
