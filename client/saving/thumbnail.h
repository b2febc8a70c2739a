#pragma once

#include <QColor>
#include <QImage>
#include <string>

namespace TarnClient {

/// PNG bytes of a plan's thumbnail: the wall's windows as a whole, with `ground` around them; empty for a null picture.
/// Thread: any but GUI, since it scales.
std::string ThumbnailOf(const QImage& windows, const QColor& ground);

}  // namespace TarnClient
