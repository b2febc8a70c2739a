#include "pictures/jpeg_unit_builder.h"

#include <QtEndian>
#include <utility>

#include "pictures/jpeg_head.h"

namespace TarnClient {

namespace {

constexpr int kMainHead = 8, kRestartHead = 4, kTablesHead = 4;
constexpr int kFirstWithRestart = 64, kLastWithRestart = 127, kFirstOwnTables = 128, kOwnTablesEachTime = 255;

int At(const QByteArray& bytes, int place) {
  return static_cast<unsigned char>(bytes[place]);
}

bool HasRestarts(const QByteArray& payload) {
  const int type = At(payload, 4);
  return type >= kFirstWithRestart && type <= kLastWithRestart;
}

}  // namespace

CJpegUnitBuilder::CJpegUnitBuilder(const VideoTrack& track, Receiver receiver)
    : size_(track.size), receiver_(std::move(receiver)) {}

void CJpegUnitBuilder::Add(const RtpPacket& packet) {
  const QByteArray& payload = packet.payload;
  if (payload.size() <= kMainHead) {
    return;
  }
  int at = kMainHead;
  if (HasRestarts(payload)) {
    at += kRestartHead;
  }
  const int offset = At(payload, 1) << 16 | At(payload, 2) << 8 | At(payload, 3);
  if (offset == 0) {
    Drop();
    stamp_ = packet.stamp;
    if (!Begin(payload, at)) {
      return Drop();
    }
    at = payload.size();
  } else if (bytes_.isEmpty() || packet.stamp != stamp_ || offset != bytes_.size() - scan_at_ ||
             bytes_.size() > kLargestUnit || at > payload.size()) {
    return Drop();  // a part is missing
  }
  bytes_.append(payload.constData() + at, payload.size() - at);
  if (packet.marker) {
    Finish();
  }
}

// Takes the first packet, whose picture begins at `at` or behind the tables there.
bool CJpegUnitBuilder::Begin(const QByteArray& payload, int at) {
  JpegHead head;
  head.halved_rows = (At(payload, 4) & 0x3f) == 1;
  head.width = 8 * At(payload, 6);
  head.height = 8 * At(payload, 7);
  if (head.width == 0 || head.height == 0) {
    head.width = size_.width();
    head.height = size_.height();
  }
  if (at > payload.size() || head.width <= 0 || head.height <= 0) {
    return false;
  }
  if (HasRestarts(payload)) {
    head.restart_interval = qFromBigEndian<quint16>(payload.constData() + kMainHead);
  }
  const int quality = At(payload, 5);
  if (quality < kFirstOwnTables) {
    head.quantization = QuantizationFor(quality);
  } else if (at + kTablesHead <= payload.size()) {
    const int length = qFromBigEndian<quint16>(payload.constData() + at + 2);
    head.quantization = TablesOf(quality, payload.mid(at + kTablesHead, length));
    at += kTablesHead + length;
  }
  if (at > payload.size() || head.quantization.isEmpty()) {
    return false;
  }
  bytes_ = WriteJpegHead(head);
  scan_at_ = bytes_.size();
  bytes_.append(payload.constData() + at, payload.size() - at);
  return true;
}

// Of one quality they are always the same, and need be sent but once; of the last one they are not.
QByteArray CJpegUnitBuilder::TablesOf(int quality, const QByteArray& sent) {
  if (quality == kOwnTablesEachTime) {
    return sent;
  }
  if (!sent.isEmpty()) {
    tables_.insert(quality, sent);
  }
  return tables_.value(quality);
}

void CJpegUnitBuilder::Finish() {
  AccessUnit unit;
  unit.codec = VideoCodec::Jpeg;
  unit.is_key = true;
  unit.stamp = stamp_;
  unit.bytes = std::move(bytes_);
  unit.bytes.append("\xff\xd9", 2);
  Drop();
  receiver_(std::move(unit));
}

void CJpegUnitBuilder::Drop() {
  bytes_ = QByteArray();
}

}  // namespace TarnClient
