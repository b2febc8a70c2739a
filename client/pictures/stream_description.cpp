#include "pictures/stream_description.h"

#include <QList>

namespace TarnClient {

namespace {

constexpr int kStaticJpeg = 26, kLongestSide = 8192;

VideoCodec CodecNamed(const QByteArray& name) {
  const QByteArray upper = name.toUpper();
  if (upper == "H264") {
    return VideoCodec::H264;
  }
  if (upper == "H265" || upper == "HEVC") {
    return VideoCodec::H265;
  }
  if (upper == "JPEG") {
    return VideoCodec::Jpeg;
  }
  return VideoCodec::Unknown;
}

// "a=rtpmap:96 H264/90000" without its name.
void TakeMap(const QByteArray& value, VideoTrack* track) {
  const QList<QByteArray> words = value.simplified().split(' ');
  if (words.size() < 2 || words[0].toInt() != track->payload_type) {
    return;
  }
  const QList<QByteArray> parts = words[1].split('/');
  track->codec = CodecNamed(parts[0]);
  const int rate = parts.value(1).toInt();
  if (rate > 0) {
    track->clock_rate = rate;
  }
}

void AddSets(const QByteArray& list, VideoTrack* track) {
  for (const QByteArray& coded : list.split(',')) {
    const QByteArray set = QByteArray::fromBase64(coded.trimmed());
    if (!set.isEmpty()) {
      track->parameter_sets.append(set);
    }
  }
}

// "a=fmtp:96 packetization-mode=1;sprop-parameter-sets=..."
void TakeFormat(const QByteArray& value, VideoTrack* track) {
  const int space = value.indexOf(' ');
  for (const QByteArray& part : value.mid(space + 1).split(';')) {
    const int equals = part.indexOf('=');
    const QByteArray name = part.left(equals).trimmed().toLower();
    if (name == "sprop-parameter-sets" || name == "sprop-vps" || name == "sprop-sps" || name == "sprop-pps") {
      AddSets(part.mid(equals + 1), track);
    }
  }
}

// "a=x-dimensions:1920,1080" or "a=framesize:26 1920-1080"; empty where it is no size of a picture.
QSize SizeIn(const QByteArray& value) {
  const QList<QByteArray> numbers = value.split(' ').last().replace('-', ',').split(',');
  const QSize size(numbers.value(0).toInt(), numbers.value(1).toInt());
  if (size.width() > kLongestSide || size.height() > kLongestSide) {
    return QSize();
  }
  return size;
}

void TakeAttribute(const QByteArray& attribute, VideoTrack* track) {
  const int colon = attribute.indexOf(':');
  const QByteArray name = attribute.left(colon).toLower(), value = attribute.mid(colon + 1).trimmed();
  if (name == "rtpmap") {
    TakeMap(value, track);
  } else if (name == "fmtp") {
    TakeFormat(value, track);
  } else if (name == "control") {
    track->control = value;
  } else if (name == "x-dimensions" || name == "framesize") {
    track->size = SizeIn(value);
  }
}

// "m=video 0 RTP/AVP 96"
VideoTrack TrackOf(const QByteArray& media) {
  VideoTrack track;
  track.payload_type = media.simplified().split(' ').value(3).toInt();
  if (track.payload_type == kStaticJpeg) {
    track.codec = VideoCodec::Jpeg;
  }
  return track;
}

bool IsPictures(const QByteArray& media) {
  return media.startsWith("video ") && media.contains("RTP/");
}

}  // namespace

std::optional<VideoTrack> ReadDescription(const QByteArray& text) {
  QVector<VideoTrack> tracks;
  bool in_pictures = false;
  for (const QByteArray& raw : text.split('\n')) {
    const QByteArray line = raw.trimmed();
    if (line.startsWith("m=")) {
      in_pictures = IsPictures(line.mid(2));
      if (in_pictures) {
        tracks.append(TrackOf(line.mid(2)));
      }
    } else if (in_pictures && line.startsWith("a=")) {
      TakeAttribute(line.mid(2), &tracks.last());
    }
  }
  if (tracks.isEmpty()) {
    return std::nullopt;
  }
  for (const VideoTrack& track : qAsConst(tracks)) {
    if (track.codec != VideoCodec::Unknown) {
      return track;
    }
  }
  return tracks.first();
}

// Put together as texts: cameras expect what they said, also where a URL's rules would make something else of it.
QByteArray TrackUrl(const QByteArray& base, const QByteArray& control) {
  if (control.isEmpty() || control == "*") {
    return base;
  }
  if (control.startsWith("rtsp://") || control.startsWith("rtsps://")) {
    return control;
  }
  if (base.endsWith('/') || control.startsWith('/')) {
    return base + control;
  }
  return base + '/' + control;
}

}  // namespace TarnClient
