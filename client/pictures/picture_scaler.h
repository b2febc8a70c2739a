#pragma once

#include <QImage>
#include <array>

struct AVFrame;
struct SwsContext;

namespace TarnClient {

/// Makes images of decoded pictures, in one size. Thread: any, one at a time.
class CPictureScaler {
 public:
  CPictureScaler() = default;
  ~CPictureScaler();
  CPictureScaler(const CPictureScaler&) = delete;
  CPictureScaler& operator=(const CPictureScaler&) = delete;

  /// Null when there is no memory for it, or the picture's format is not known.
  QImage Scale(const AVFrame& picture, const QSize& size);

 private:
  /// What a context was made for.
  struct Way {
    QSize from, to;
    int format = -1, colours = -1, range = -1;
    bool operator==(const Way& other) const {
      return from == other.from && to == other.to && format == other.format && colours == other.colours &&
             range == other.range;
    }
  };

  bool Prepare(const AVFrame& picture, const QSize& size);
  QImage& FreeImage(const QSize& size);

  SwsContext* context_ = nullptr;
  Way way_;
  std::array<QImage, 4> images_;  // written again once no one else has them
};

}  // namespace TarnClient
