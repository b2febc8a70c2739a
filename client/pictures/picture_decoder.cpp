#include "pictures/picture_decoder.h"

#include <cstring>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace TarnClient {

namespace {

// A little more than 8K: what a camera says of its pictures decides how much memory is asked for.
constexpr qint64 kMostPixels = 36'000'000;

AVCodecID IdOf(VideoCodec codec) {
  switch (codec) {
    case VideoCodec::H264:
      return AV_CODEC_ID_H264;
    case VideoCodec::H265:
      return AV_CODEC_ID_HEVC;
    case VideoCodec::Jpeg:
      return AV_CODEC_ID_MJPEG;
    case VideoCodec::Unknown:
      break;
  }
  return AV_CODEC_ID_NONE;
}

// What it says is about damaged pictures, and would fill a log with every bad line.
void KeepQuiet(void*, int, const char*, va_list) {}

}  // namespace

struct CPictureDecoder::Parts {
  struct FreeContext {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
  };
  struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  };
  struct FreePacket {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  };

  std::unique_ptr<AVCodecContext, FreeContext> context;
  std::unique_ptr<AVFrame, FreeFrame> frame{av_frame_alloc()};
  std::unique_ptr<AVPacket, FreePacket> packet{av_packet_alloc()};
};

CPictureDecoder::CPictureDecoder() : parts_(std::make_unique<Parts>()) {
  av_log_set_callback(&KeepQuiet);
}

CPictureDecoder::~CPictureDecoder() = default;

// One thread for each stream's pictures: there are more streams than cores, and more threads only add delay.
bool CPictureDecoder::Prepare(const AccessUnit& unit) {
  if (parts_->context && codec_ == unit.codec) {
    if (connection_ != unit.connection) {
      avcodec_flush_buffers(parts_->context.get());
    }
    connection_ = unit.connection;
    return true;
  }
  codec_ = unit.codec;
  connection_ = unit.connection;
  const AVCodec* codec = avcodec_find_decoder(IdOf(unit.codec));
  parts_->context.reset(codec ? avcodec_alloc_context3(codec) : nullptr);
  if (!parts_->context) {
    return false;
  }
  parts_->context->thread_count = 1;
  parts_->context->max_pixels = kMostPixels;
  parts_->context->flags |= AV_CODEC_FLAG_LOW_DELAY;
  if (avcodec_open2(parts_->context.get(), codec, nullptr) < 0) {
    parts_->context.reset();
  }
  return parts_->context != nullptr;
}

void CPictureDecoder::Decode(const AccessUnit& unit, const Receiver& receiver) {
  if (!Prepare(unit) || av_new_packet(parts_->packet.get(), unit.bytes.size()) < 0) {
    return;
  }
  std::memcpy(parts_->packet->data, unit.bytes.constData(), static_cast<size_t>(unit.bytes.size()));
  parts_->packet->pts = unit.taken_ms;
  const bool taken = avcodec_send_packet(parts_->context.get(), parts_->packet.get()) >= 0;
  av_packet_unref(parts_->packet.get());
  while (taken && avcodec_receive_frame(parts_->context.get(), parts_->frame.get()) >= 0) {
    qint64 taken_ms = unit.taken_ms;
    if (parts_->frame->pts != AV_NOPTS_VALUE) {
      taken_ms = parts_->frame->pts;
    }
    receiver(*parts_->frame, taken_ms);
    av_frame_unref(parts_->frame.get());
  }
}

}  // namespace TarnClient
