#include "store/thumbnail_rules.h"

#include <QBuffer>
#include <QImageReader>

#include "plan_rules/thumbnail_limits.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::IsPng;
using view_plugin_protocol::IsThumbnailSize;
using view_plugin_protocol::kMostThumbnailBytes;
using view_plugin_protocol::kMostThumbnailSide;

constexpr qint64 kMostPixelsRead = 32 * 1024 * 1024;
constexpr int kMostBytesRead = 64 * 1024 * 1024;
const char kFormat[] = "png";

QByteArray Encoded(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, kFormat);
  return bytes;
}

// Noise hardly shrinks in a PNG, so what is still too long gets smaller until it fits.
QByteArray Shrunk(QImage picture) {
  picture = picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  for (int side = kMostThumbnailSide; side > 0; side /= 2) {
    if (picture.width() > side || picture.height() > side) {
      picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    const QByteArray bytes = Encoded(picture);
    if (bytes.size() <= kMostThumbnailBytes) {
      return bytes;
    }
  }
  return QByteArray();
}

}  // namespace

QByteArray BoundedThumbnail(const std::string& png) {
  const bool is_short = png.size() <= static_cast<size_t>(kMostThumbnailBytes);
  if (!IsPng(png) || png.size() > static_cast<size_t>(kMostBytesRead)) {
    return is_short ? QByteArray::fromStdString(png) : QByteArray();  // what no reader knows harms none
  }
  QByteArray bytes = QByteArray::fromStdString(png);
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer, kFormat);
  const QSize pixels = reader.size();
  if (is_short && (!pixels.isValid() || IsThumbnailSize(pixels))) {
    return bytes;
  }
  if (pixels.isEmpty() || qint64(pixels.width()) * pixels.height() > kMostPixelsRead) {
    return QByteArray();
  }
  const QImage picture = reader.read();
  return picture.isNull() ? QByteArray() : Shrunk(picture);
}

}  // namespace TarnHost::Store
