#include "MarUIControl/spin_box.h"

#include "MarUIControl/field_keys.h"

namespace MarUIControl {

CSpinBox::CSpinBox(QWidget* parent) : QSpinBox(parent) {
  setFocusPolicy(Qt::StrongFocus);  // not by the wheel
}

CSpinBox::~CSpinBox() = default;

bool CSpinBox::event(QEvent* event) {
  if (IsClearLineKey(event)) {
    event->ignore();
    return true;
  }
  return QSpinBox::event(event);
}

void CSpinBox::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QSpinBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace MarUIControl
