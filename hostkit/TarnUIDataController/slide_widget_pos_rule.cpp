#include "TarnUIDataController/slide_widget_pos_rule.h"

namespace tarn_ui_data_controller {

CSlideWidgetPosRule::CSlideWidgetPosRule() = default;

CSlideWidgetPosRule::~CSlideWidgetPosRule() = default;

void CSlideWidgetPosRule::SetPosAttachTo(QWidget* widget) {
  attach_to_ = widget;
}

QWidget* CSlideWidgetPosRule::PosAttachTo() const {
  return attach_to_;
}

}  // namespace tarn_ui_data_controller
