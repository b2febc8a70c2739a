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

/// Whether Ctrl+D is about to become a shortcut. On some desktops it deletes the letter after the cursor: it must not
/// run a command of the window for someone who types, be it on that desktop or another.
inline bool IsDeleteLetterKey(const QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) {
    return false;
  }
  const auto* key = static_cast<const QKeyEvent*>(event);
  return key->key() == Qt::Key_D && key->modifiers() == Qt::ControlModifier;
}

}  // namespace MarUIControl
