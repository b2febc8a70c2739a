#pragma once

#include <QAccessible>

#include "host_export.h"

class QWidget;

namespace MarUIControl {

/// Assistive technology takes `widget` for this role from now on; its name and description are those of the widget. A
/// button tells whether it is checked besides, and can be pressed. To be called before name and description are set:
/// with them the widget becomes known. Thread: GUI.
TARN_HOST_EXPORT void SetAccessibleRole(QWidget* widget, QAccessible::Role role);

}  // namespace MarUIControl
