#pragma once

#include <optional>

class QKeyEvent;

namespace TarnClient {

/// Whether Caps Lock is on. Thread: GUI.
struct CapsLock {
  /// What the display says; none from one that cannot.
  static std::optional<bool> Now();
  /// What a key that was pressed tells of it; none from one that is no letter with two cases.
  static std::optional<bool> ShownBy(const QKeyEvent& key);
};

}  // namespace TarnClient
