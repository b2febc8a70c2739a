#include "saving/thumbnail.h"

#include <QPainter>

#include "plan_rules/picture_bytes.h"

namespace TarnClient {

std::string ThumbnailOf(const QImage& windows, const QColor& ground) {
  if (windows.isNull()) {
    return std::string();
  }
  const QSize size(320, 180);
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(ground);
  const QImage scaled = windows.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QPainter painter(&picture);
  painter.drawImage((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2, scaled);
  painter.end();
  return view_plugin_protocol::BytesOf(picture);
}

}  // namespace TarnClient
