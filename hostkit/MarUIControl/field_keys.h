#pragma once

#include <QKeyEvent>

namespace MarUIControl {

/// Whether it is Ctrl+U, which clears a whole field on some desktops: a window that has a command under it would have
/// the key everywhere but in its fields, where it destroys what was typed.
inline bool IsClearLineKey(const QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) {
    return false;
  }
  const auto* key = static_cast<const QKeyEvent*>(event);
  return key->key() == Qt::Key_U && key->modifiers() == Qt::ControlModifier;
}

}  // namespace MarUIControl
