#pragma once

#include <QByteArray>
#include <QSize>
#include <QVector>
#include <optional>

#include "pictures/video_codec.h"

namespace TarnClient {

/// The pictures in a stream's description (SDP).
struct VideoTrack {
  VideoCodec codec = VideoCodec::Unknown;
  int payload_type = -1;
  int clock_rate = 90000;
  QByteArray control;                  // as it stands there, see TrackUrl()
  QVector<QByteArray> parameter_sets;  // that H.264 and H.265 need before the first picture
  QSize size;                          // of JPEG pictures too large for their own head to say; else empty
};

/// The first track of pictures, one whose codec is known before others; empty when there is none.
std::optional<VideoTrack> ReadDescription(const QByteArray& text);

/// Where the track is asked for, when the description came from `base`.
QByteArray TrackUrl(const QByteArray& base, const QByteArray& control);

}  // namespace TarnClient
