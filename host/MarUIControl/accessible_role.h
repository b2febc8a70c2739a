#pragma once

#include <QAccessible>

#include "host_export.h"

class QWidget;

namespace MarUIControl {

/// Assistive technology takes `widget` for this role from now on; its name and description are those of the widget. A
/// button tells whether it is checked besides, and can be pressed. To be called before name and description are set:
/// with them the widget becomes known. Thread: GUI.
TARN_HOST_EXPORT void SetAccessibleRole(QWidget* widget, QAccessible::Role role);

/// What assistive technology reads about `widget` when it is asked, for what changes all the time: unlike a description
/// it is not read out by itself. The widget has a role of its own already. Thread: GUI.
TARN_HOST_EXPORT void SetQuietDescription(QWidget* widget, const QString& text);

/// Has what `widget` says of itself, name or text and description, read out at once, wherever the focus is: when it has
/// just come up or changed. Thread: GUI.
TARN_HOST_EXPORT void AnnounceAlert(QWidget* widget);

}  // namespace MarUIControl
