#include "pictures/picture_scaler.h"

extern "C" {
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

namespace TarnClient {

namespace {

// Formats whose name alone says that they use all values of a byte; the scaler wants that said beside the format.
AVPixelFormat PlainFormat(int format, bool* full_range) {
  *full_range = true;
  switch (format) {
    case AV_PIX_FMT_YUVJ420P:
      return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P:
      return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P:
      return AV_PIX_FMT_YUV444P;
    default:
      *full_range = false;
      return static_cast<AVPixelFormat>(format);
  }
}

// As most cameras mean it who do not say: large pictures by the newer standard.
const int* CoefficientsOf(const AVFrame& picture) {
  if (picture.colorspace == AVCOL_SPC_UNSPECIFIED && picture.height >= 720) {
    return sws_getCoefficients(SWS_CS_ITU709);
  }
  return sws_getCoefficients(picture.colorspace);
}

}  // namespace

CPictureScaler::~CPictureScaler() {
  sws_freeContext(context_);
}

QImage& CPictureScaler::FreeImage(const QSize& size) {
  QImage* free = &images_.front();
  for (QImage& image : images_) {
    if (image.isNull() || image.isDetached()) {
      free = &image;
      break;
    }
  }
  if (free->size() != size || !free->isDetached()) {
    *free = QImage(size, QImage::Format_RGB32);
  }
  return *free;
}

bool CPictureScaler::Prepare(const AVFrame& picture, const QSize& size) {
  const Way way{QSize(picture.width, picture.height), size, picture.format, picture.colorspace, picture.color_range};
  if (context_ && way == way_) {
    return true;
  }
  way_ = way;
  sws_freeContext(context_);
  bool full_range = false;
  const AVPixelFormat format = PlainFormat(picture.format, &full_range);
  full_range = full_range || picture.color_range == AVCOL_RANGE_JPEG;
  int method = SWS_BILINEAR;
  if (way.from == size) {
    method = SWS_POINT;
  }
  context_ = sws_getContext(picture.width, picture.height, format, size.width(), size.height(), AV_PIX_FMT_BGRA, method,
                            nullptr, nullptr, nullptr);
  if (context_) {
    const int* coefficients = CoefficientsOf(picture);
    sws_setColorspaceDetails(context_, coefficients, int(full_range), coefficients, 1, 0, 1 << 16, 1 << 16);
  }
  return context_ != nullptr;
}

QImage CPictureScaler::Scale(const AVFrame& picture, const QSize& size) {
  if (!Prepare(picture, size)) {
    return QImage();
  }
  QImage& image = FreeImage(size);
  if (image.isNull()) {
    return QImage();
  }
  uint8_t* const target[] = {image.bits()};
  const int stride[] = {static_cast<int>(image.bytesPerLine())};
  sws_scale(context_, picture.data, picture.linesize, 0, picture.height, target, stride);
  return image;
}

}  // namespace TarnClient
