#pragma once

#include <QByteArray>

namespace TarnClient {

/// What a JPEG file says before the coded picture, and RTP leaves out.
struct JpegHead {
  int width = 0, height = 0;
  bool halved_rows = false;  // of colour, too, not only columns
  int restart_interval = 0;  // 0: none
  QByteArray quantization;   // one or two tables of 64 bytes
};

QByteArray WriteJpegHead(const JpegHead& head);

/// The two tables that a quality from 1 to 99 stands for.
QByteArray QuantizationFor(int quality);

}  // namespace TarnClient
