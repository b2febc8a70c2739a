#include "WidgetKit/slide_out_data.h"

namespace WidgetKit {

CSlideOutData::CSlideOutData() = default;

CSlideOutData::CSlideOutData(const CSlideOutData&) = default;

CSlideOutData& CSlideOutData::operator=(const CSlideOutData&) = default;

CSlideOutData::~CSlideOutData() = default;

void CSlideOutData::SetVal_slide_width(int width) {
  slide_width_ = width;
}

int CSlideOutData::GetVal_slide_width() const {
  return slide_width_;
}

void CSlideOutData::SetVal_ptr_dock_widget(QWidget* widget) {
  dock_widget_ = widget;
}

QWidget* CSlideOutData::GetVal_ptr_dock_widget() const {
  return dock_widget_;
}

void CSlideOutData::SetVal_ptr_dock_pos_rule(std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> rule) {
  pos_rule_ = std::move(rule);
}

std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> CSlideOutData::GetVal_ptr_dock_pos_rule() const {
  return pos_rule_;
}

}  // namespace WidgetKit
