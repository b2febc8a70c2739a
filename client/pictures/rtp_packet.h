#pragma once

#include <QByteArray>
#include <optional>

namespace TarnClient {

struct RtpPacket {
  int type = 0;
  bool marker = false;  // the last one of a picture
  quint16 sequence = 0;
  quint32 stamp = 0;   // in ticks of the track's clock
  QByteArray payload;  // shares the bytes it was read from
};

/// Empty when the bytes are none, or control packets.
std::optional<RtpPacket> ReadRtp(const QByteArray& bytes);

}  // namespace TarnClient
