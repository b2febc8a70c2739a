#pragma once

#include <QString>
#include <string>

#include "host_export.h"

class QWidget;

namespace MarUIControl {

/// UTF-8 to and from QString. Broken UTF-8 becomes replacement characters. Thread: any.
TARN_HOST_EXPORT QString StringToQString(const std::string& text);
TARN_HOST_EXPORT std::string QStringToString(const QString& text);

/// The window that `widget` stands in, or null. Thread: GUI.
TARN_HOST_EXPORT QWidget* GetIndependentWindow(QWidget* widget);

}  // namespace MarUIControl
