#pragma once

#include <functional>
#include <memory>

#include "pictures/access_unit.h"

struct AVFrame;

namespace TarnClient {

/// Turns the coded pictures of one stream into pictures. Thread: any, one at a time.
class CPictureDecoder {
 public:
  /// A picture and when it was taken; it is valid during the call.
  using Receiver = std::function<void(const AVFrame& picture, qint64 taken_ms)>;

  CPictureDecoder();
  ~CPictureDecoder();
  CPictureDecoder(const CPictureDecoder&) = delete;
  CPictureDecoder& operator=(const CPictureDecoder&) = delete;

  /// Begins again with a unit of another codec or connection. What cannot be decoded gives no picture.
  void Decode(const AccessUnit& unit, const Receiver& receiver);

 private:
  struct Parts;

  bool Prepare(const AccessUnit& unit);

  std::unique_ptr<Parts> parts_;
  VideoCodec codec_ = VideoCodec::Unknown;
  int connection_ = -1;
};

}  // namespace TarnClient
