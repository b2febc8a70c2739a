#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <string>

namespace view_plugin_protocol {

/// The picture as a plan keeps it. Thread: any.
inline std::string BytesOf(const QImage& picture) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "PNG");
  return bytes.toStdString();
}

}  // namespace view_plugin_protocol
