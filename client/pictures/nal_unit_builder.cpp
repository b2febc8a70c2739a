#include "pictures/nal_unit_builder.h"

#include <QtEndian>
#include <utility>

namespace TarnClient {

namespace {

constexpr char kStartCode[] = {0, 0, 0, 1};
constexpr unsigned char kFirstFragment = 0x80, kLastFragment = 0x40;
constexpr int kH264Several = 24, kH264Fragment = 28, kH264FirstPicture = 1, kH264Key = 5, kH264Set = 7;
constexpr int kH265Several = 48, kH265Fragment = 49, kH265FirstKey = 16, kH265LastKey = 21, kH265FirstSet = 32,
              kH265LastSet = 34;

unsigned char ByteAt(const QByteArray& bytes, int place) {
  return static_cast<unsigned char>(bytes[place]);
}

int H265Type(unsigned char first) {
  return first >> 1 & 0x3f;
}

QByteArray StartCode() {
  return QByteArray(kStartCode, sizeof(kStartCode));
}

}  // namespace

CNalUnitBuilder::CNalUnitBuilder(const VideoTrack& track, Receiver receiver)
    : codec_(track.codec), receiver_(std::move(receiver)) {
  for (const QByteArray& set : track.parameter_sets) {
    sets_ += StartCode() + set;
  }
}

void CNalUnitBuilder::Add(const RtpPacket& packet) {
  if (begun_ && packet.stamp != stamp_) {
    Finish();
  }
  if (last_sequence_ && packet.sequence != static_cast<quint16>(*last_sequence_ + 1)) {
    DropFragment();
  }
  last_sequence_ = packet.sequence;
  stamp_ = packet.stamp;
  begun_ = true;
  if (codec_ == VideoCodec::H264 && packet.payload.size() > 1) {
    TakeH264(packet.payload);
  } else if (codec_ == VideoCodec::H265 && packet.payload.size() > 2) {
    TakeH265(packet.payload);
  }
  if (packet.marker) {
    Finish();
  }
}

void CNalUnitBuilder::TakeH264(const QByteArray& payload) {
  const int type = ByteAt(payload, 0) & 0x1f;
  if (type == kH264Several) {
    TakeSeveral(payload, 1);
  } else if (type == kH264Fragment) {
    const int head = (ByteAt(payload, 0) & 0xe0) | (ByteAt(payload, 1) & 0x1f);
    TakeFragment(payload, QByteArray(1, static_cast<char>(head)), 1);
  } else if (type > 0 && type < kH264Several) {
    AddPart(payload);
  }
}

void CNalUnitBuilder::TakeH265(const QByteArray& payload) {
  const int type = H265Type(ByteAt(payload, 0));
  if (type == kH265Several) {
    TakeSeveral(payload, 2);
  } else if (type == kH265Fragment) {
    const int head = (ByteAt(payload, 0) & 0x81) | (ByteAt(payload, 2) & 0x3f) << 1;
    TakeFragment(payload, QByteArray(1, static_cast<char>(head)) + payload[1], 2);
  } else if (type < kH265Several) {
    AddPart(payload);
  }
}

void CNalUnitBuilder::TakeSeveral(const QByteArray& payload, int from) {
  while (from + 2 < payload.size()) {
    const int length = qFromBigEndian<quint16>(payload.constData() + from);
    from += 2;
    if (length == 0 || from + length > payload.size()) {
      return;
    }
    AddPart(QByteArray::fromRawData(payload.constData() + from, length));
    from += length;
  }
}

void CNalUnitBuilder::TakeFragment(const QByteArray& payload, const QByteArray& head, int flags_at) {
  const unsigned char flags = ByteAt(payload, flags_at);
  if (flags & kFirstFragment) {
    DropFragment();
    fragment_at_ = bytes_.size();
    NotePart(ByteAt(head, 0));
    const QByteArray begin = StartCode() + head;
    Append(begin.constData(), begin.size());
  }
  if (fragment_at_ < 0) {
    return;
  }
  Append(payload.constData() + flags_at + 1, payload.size() - flags_at - 1);
  if (flags & kLastFragment) {
    fragment_at_ = -1;
  }
}

// Of a picture that has become too large nothing is kept, up to its end.
void CNalUnitBuilder::Append(const char* bytes, int size) {
  too_large_ = too_large_ || bytes_.size() + size > kLargestUnit;
  if (too_large_) {
    bytes_.clear();
    return;
  }
  bytes_.append(bytes, size);
}

void CNalUnitBuilder::AddPart(const QByteArray& part) {
  DropFragment();
  NotePart(ByteAt(part, 0));
  Append(kStartCode, sizeof(kStartCode));
  Append(part.constData(), part.size());
}

// A picture that brings its parameters can be begun with, also where it is not called a key frame.
void CNalUnitBuilder::NotePart(unsigned char first) {
  if (codec_ == VideoCodec::H264) {
    const int type = first & 0x1f;
    has_picture_ = has_picture_ || (type >= kH264FirstPicture && type <= kH264Key);
    has_sets_ = has_sets_ || type == kH264Set;
    is_key_ = is_key_ || type == kH264Set || type == kH264Key;
    return;
  }
  const int type = H265Type(first);
  has_picture_ = has_picture_ || type < kH265FirstSet;
  const bool is_set = type >= kH265FirstSet && type <= kH265LastSet;
  has_sets_ = has_sets_ || is_set;
  is_key_ = is_key_ || is_set || (type >= kH265FirstKey && type <= kH265LastKey);
}

void CNalUnitBuilder::DropFragment() {
  if (fragment_at_ >= 0) {
    bytes_.truncate(fragment_at_);
    fragment_at_ = -1;
  }
}

void CNalUnitBuilder::Finish() {
  DropFragment();
  if (!bytes_.isEmpty() && !too_large_) {
    AccessUnit unit;
    unit.codec = codec_;
    unit.is_key = is_key_;
    unit.has_picture = has_picture_;
    unit.stamp = stamp_;
    unit.bytes = std::move(bytes_);
    if (is_key_ && !has_sets_) {
      unit.bytes.prepend(sets_);
    }
    receiver_(std::move(unit));
  }
  bytes_ = QByteArray();
  begun_ = is_key_ = has_sets_ = has_picture_ = too_large_ = false;
}

}  // namespace TarnClient
