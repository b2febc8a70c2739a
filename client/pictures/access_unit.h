#pragma once

#include <QByteArray>

#include "pictures/video_codec.h"

namespace TarnClient {

/// One coded picture.
struct AccessUnit {
  VideoCodec codec = VideoCodec::Unknown;
  QByteArray bytes;
  bool is_key = false;      // it can be decoded without those before
  bool has_picture = true;  // there may be nothing but parameters for the next ones
  quint32 stamp = 0;        // in ticks of the track's clock
  qint64 taken_ms = 0;      // by SteadyMs()
  qint64 arrived_ms = 0;    // likewise
  int connection = 0;       // units of different ones do not belong together
};

}  // namespace TarnClient
