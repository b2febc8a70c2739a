#pragma once

#include "pictures/unit_builder.h"

namespace TarnClient {

/// H.264 and H.265: pictures of several parts (NAL units), of which some share a packet and some take several.
class CNalUnitBuilder : public IUnitBuilder {
 public:
  CNalUnitBuilder(const VideoTrack& track, Receiver receiver);
  void Add(const RtpPacket& packet) override;

 private:
  void TakeH264(const QByteArray& payload);
  void TakeH265(const QByteArray& payload);
  void TakeSeveral(const QByteArray& payload, int from);
  void TakeFragment(const QByteArray& payload, const QByteArray& head, int flags_at);
  void AddPart(const QByteArray& part);
  void Append(const char* bytes, int size);
  void NotePart(unsigned char first);
  void DropFragment();
  void Finish();

  const VideoCodec codec_;
  const Receiver receiver_;
  QByteArray sets_;  // from the description, for key frames that bring none
  QByteArray bytes_;
  bool begun_ = false, is_key_ = false, has_sets_ = false, has_picture_ = false, too_large_ = false;
  int fragment_at_ = -1;  // where the part begins that is still to be completed
  quint32 stamp_ = 0;
  std::optional<quint16> last_sequence_;
};

}  // namespace TarnClient
