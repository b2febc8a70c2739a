#pragma once

#include <QSize>

namespace view_plugin_protocol {

/// What a plan's thumbnail may have at most. The service keeps no larger one, and nothing larger is decoded.
constexpr int kMostThumbnailBytes = 256 * 1024;
constexpr int kMostThumbnailSide = 1024;

inline bool IsThumbnailSize(const QSize& pixels) {
  return !pixels.isEmpty() && pixels.width() <= kMostThumbnailSide && pixels.height() <= kMostThumbnailSide;
}

}  // namespace view_plugin_protocol
