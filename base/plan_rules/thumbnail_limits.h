#pragma once

#include <QSize>
#include <string>

namespace view_plugin_protocol {

/// What a plan's thumbnail may have at most. The service keeps no larger one, and nothing larger is decoded.
constexpr int kMostThumbnailBytes = 256 * 1024;
constexpr int kMostThumbnailSide = 1024;

/// Whether a reader is worth trying: it complains on stderr about what is none.
inline bool IsPng(const std::string& bytes) {
  return bytes.compare(0, 8, "\x89PNG\r\n\x1a\n") == 0;
}

inline bool IsThumbnailSize(const QSize& pixels) {
  return !pixels.isEmpty() && pixels.width() <= kMostThumbnailSide && pixels.height() <= kMostThumbnailSide;
}

}  // namespace view_plugin_protocol
