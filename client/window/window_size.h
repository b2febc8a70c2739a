#pragma once

#include <QSize>

namespace TarnClient {

/// In a smaller window not everything could be used.
constexpr QSize kLeastWindowSize(1008, 660);
/// What the desktop puts around a window, at the most.
constexpr QSize kWindowFrame(16, 40);

/// The size in which the client's window opens on a screen with this much room: with its frame it stays on the screen,
/// down to the least size in which everything can be used.
inline QSize WindowSizeFor(const QSize& room) {
  constexpr QSize kUsual(1280, 800);
  return kUsual.boundedTo(room - kWindowFrame).expandedTo(kLeastWindowSize);
}

}  // namespace TarnClient
