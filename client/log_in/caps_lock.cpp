#include "log_in/caps_lock.h"

#include <QKeyEvent>

#include "qt/x11_display.h"

namespace TarnClient {

std::optional<bool> CapsLock::Now() {
  const auto lights = TarnQt::X11Display::KeyboardLights();
  if (!lights) {
    return std::nullopt;
  }
  return (*lights & 1U) != 0;
}

std::optional<bool> CapsLock::ShownBy(const QKeyEvent& key) {
  const QString text = key.text();
  if (text.size() != 1 || text.toLower() == text.toUpper()) {
    return std::nullopt;
  }
  const bool has_shift = key.modifiers().testFlag(Qt::ShiftModifier);
  return (text == text.toUpper()) != has_shift;
}

}  // namespace TarnClient
