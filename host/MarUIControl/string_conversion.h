#pragma once

#include <QString>
#include <string>

#include "host_export.h"

class QWidget;

namespace MarUIControl {

/// From UTF-8. Broken UTF-8 becomes replacement characters. Thread: any.
TARN_HOST_EXPORT QString StringToQString(const std::string& text);
/// To UTF-8. Thread: any.
TARN_HOST_EXPORT std::string QStringToString(const QString& text);

/// The window that `widget` stands in, itself where it is one; null for null. Thread: GUI.
TARN_HOST_EXPORT QWidget* GetIndependentWindow(QWidget* widget);

}  // namespace MarUIControl
