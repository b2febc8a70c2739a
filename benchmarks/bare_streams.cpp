#include "bare_streams.h"

#include <QImage>
#include <QPainter>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

namespace {

struct Stream {
  AVFormatContext* format = nullptr;
  AVCodecContext* codec = nullptr;
  AVFrame* frame = av_frame_alloc();
  AVPacket* packet = av_packet_alloc();
  SwsContext* scaler = nullptr;

  ~Stream() {
    sws_freeContext(scaler);
    av_packet_free(&packet);
    av_frame_free(&frame);
    avcodec_free_context(&codec);
    avformat_close_input(&format);
  }
};

bool Open(const QByteArray& url, Stream* stream) {
  AVDictionary* options = nullptr;
  av_dict_set(&options, "rtsp_transport", "tcp", 0);
  av_dict_set(&options, "allowed_media_types", "video", 0);
  av_dict_set(&options, "fflags", "nobuffer", 0);
  const int opened = avformat_open_input(&stream->format, url.constData(), nullptr, &options);
  av_dict_free(&options);
  if (opened < 0 || stream->format->nb_streams == 0) {
    return false;
  }
  const AVCodecParameters* parameters = stream->format->streams[0]->codecpar;
  const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
  stream->codec = avcodec_alloc_context3(codec);
  avcodec_parameters_to_context(stream->codec, parameters);
  stream->codec->thread_count = 1;
  stream->codec->flags |= AV_CODEC_FLAG_LOW_DELAY;
  return avcodec_open2(stream->codec, codec, nullptr) >= 0;
}

void Draw(Stream* stream, QImage* picture, QImage* window) {
  const AVFrame& frame = *stream->frame;
  if (picture->width() != frame.width || picture->height() != frame.height) {
    *picture = QImage(frame.width, frame.height, QImage::Format_RGB32);
  }
  stream->scaler =
      sws_getCachedContext(stream->scaler, frame.width, frame.height, AVPixelFormat(frame.format), frame.width,
                           frame.height, AV_PIX_FMT_BGRA, SWS_POINT, nullptr, nullptr, nullptr);
  uint8_t* const target[] = {picture->bits()};
  const int stride[] = {static_cast<int>(picture->bytesPerLine())};
  sws_scale(stream->scaler, frame.data, frame.linesize, 0, frame.height, target, stride);
  QPainter painter(window);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(window->rect(), *picture);
}

}  // namespace

BareStreams::BareStreams(const QStringList& urls, const QSize& window) {
  for (const QString& url : urls) {
    threads_.emplace_back([this, url = url.toUtf8(), window] { Run(url, window); });
  }
}

BareStreams::~BareStreams() {
  ends_ = true;
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

void BareStreams::Run(const QByteArray& url, const QSize& size) {
  Stream stream;
  if (!Open(url, &stream)) {
    qFatal("the bare loop cannot open %s", url.constData());
  }
  QImage picture, window(size, QImage::Format_RGB32);
  while (!ends_ && av_read_frame(stream.format, stream.packet) >= 0) {
    avcodec_send_packet(stream.codec, stream.packet);
    av_packet_unref(stream.packet);
    while (avcodec_receive_frame(stream.codec, stream.frame) >= 0) {
      Draw(&stream, &picture, &window);
      ++drawn_;
    }
  }
}
