#include "MarUIControl/range_time_edit.h"

namespace MarUIControl {

CRangeTimeEdit::CRangeTimeEdit(QWidget* parent) : CRangeTimeLineEdit(parent) {
  setAttribute(Qt::WA_StyledBackground);
}

CRangeTimeEdit::~CRangeTimeEdit() = default;

}  // namespace MarUIControl
