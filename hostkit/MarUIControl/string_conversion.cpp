#include "MarUIControl/string_conversion.h"

#include <QWidget>

namespace MarUIControl {

QString StringToQString(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

std::string QStringToString(const QString& text) {
  return text.toStdString();
}

QWidget* GetIndependentWindow(QWidget* widget) {
  if (!widget) {
    return nullptr;
  }
  return widget->window();
}

}  // namespace MarUIControl
