#pragma once

#include <QSize>

namespace TarnClient {

/// The size in which the client's window opens on a screen with this much room: with its frame it stays on the screen,
/// down to the least size in which everything can be used.
inline QSize WindowSizeFor(const QSize& room) {
  constexpr QSize kUsual(1280, 800), kLeast(1008, 660), kFrame(16, 40);
  return kUsual.boundedTo(room - kFrame).expandedTo(kLeast);
}

}  // namespace TarnClient
