#include "pictures/rtp_packet.h"

#include <QtEndian>

namespace TarnClient {

namespace {

constexpr int kHead = 12;

}  // namespace

std::optional<RtpPacket> ReadRtp(const QByteArray& bytes) {
  const auto* data = reinterpret_cast<const uchar*>(bytes.constData());
  if (bytes.size() < kHead || data[0] >> 6 != 2) {
    return std::nullopt;
  }
  int begin = kHead + 4 * (data[0] & 0x0f), end = bytes.size();
  const bool has_extension = data[0] & 0x10, is_padded = data[0] & 0x20;
  if (has_extension && begin + 4 <= end) {
    begin += 4 + 4 * qFromBigEndian<quint16>(data + begin + 2);
  }
  if (is_padded) {
    end -= data[bytes.size() - 1];
  }
  if (begin > end) {
    return std::nullopt;
  }
  RtpPacket packet;
  packet.marker = data[1] & 0x80;
  packet.type = data[1] & 0x7f;
  packet.sequence = qFromBigEndian<quint16>(data + 2);
  packet.stamp = qFromBigEndian<quint32>(data + 4);
  packet.payload = QByteArray::fromRawData(bytes.constData() + begin, end - begin);
  return packet;
}

}  // namespace TarnClient
