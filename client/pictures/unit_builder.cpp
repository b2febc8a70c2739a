#include "pictures/unit_builder.h"

#include "pictures/jpeg_unit_builder.h"
#include "pictures/nal_unit_builder.h"

namespace TarnClient {

std::unique_ptr<IUnitBuilder> IUnitBuilder::For(const VideoTrack& track, Receiver receiver) {
  switch (track.codec) {
    case VideoCodec::H264:
    case VideoCodec::H265:
      return std::make_unique<CNalUnitBuilder>(track, std::move(receiver));
    case VideoCodec::Jpeg:
      return std::make_unique<CJpegUnitBuilder>(track, std::move(receiver));
    case VideoCodec::Unknown:
      break;
  }
  return nullptr;
}

}  // namespace TarnClient
