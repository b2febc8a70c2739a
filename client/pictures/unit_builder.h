#pragma once

#include <functional>
#include <memory>

#include "pictures/access_unit.h"
#include "pictures/rtp_packet.h"
#include "pictures/stream_description.h"

namespace TarnClient {

/// Puts coded pictures together from the packets of a stream. What is incomplete, or larger than any picture, is left
/// out. Thread: any, one at a time.
class IUnitBuilder {
 public:
  using Receiver = std::function<void(AccessUnit)>;

  virtual ~IUnitBuilder() = default;
  virtual void Add(const RtpPacket& packet) = 0;

  /// Null for a codec that is not known.
  static std::unique_ptr<IUnitBuilder> For(const VideoTrack& track, Receiver receiver);
};

/// In bytes.
constexpr int kLargestUnit = 16 * 1024 * 1024;

}  // namespace TarnClient
