#pragma once

#include <QtCore/qnamespace.h>

namespace MarUIControl {

/// Return, also that of the number pad.
inline bool IsReturn(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace MarUIControl
