#include "pictures/stream_decoder.h"

extern "C" {
#include <libavutil/frame.h>
}

#include <utility>

namespace TarnClient {

using Lock = std::unique_lock<std::mutex>;

namespace {

// With more than that to catch up with, pictures on the way are decoded but not all of them shown: a camera that is
// decoded more slowly than it sends never catches up.
constexpr int kMostShownBehind = 3;
constexpr qint64 kLongestUnshownMs = 200;

}  // namespace

CStreamDecoder::CStreamDecoder(std::weak_ptr<CDecodingPool> pool, std::shared_ptr<CStreamBoard> board,
                               const StreamTimings& timings)
    : pool_(std::move(pool)), board_(std::move(board)), queue_(timings.key) {}

void CStreamDecoder::Push(AccessUnit unit) {
  bool has_work = false;
  {
    const Lock lock(mutex_);
    queue_.Add(std::move(unit));
    has_work = queue_.Waiting(mode_) > 0;
  }
  const std::shared_ptr<CDecodingPool> pool = pool_.lock();
  if (has_work && pool) {
    pool->Schedule(shared_from_this());
  }
}

void CStreamDecoder::SetMode(DecodingMode mode) {
  {
    const Lock lock(mutex_);
    mode_ = mode;
  }
  if (const std::shared_ptr<CDecodingPool> pool = pool_.lock()) {
    pool->Schedule(shared_from_this());
  }
}

qint64 CStreamDecoder::WaitMs() const {
  const Lock lock(mutex_);
  return queue_.WaitMs(mode_, SteadyMs());
}

bool CStreamDecoder::Work() {
  Lock lock(mutex_);
  const std::optional<AccessUnit> unit = queue_.Take(mode_, SteadyMs());
  if (!unit) {
    return false;
  }
  const bool is_behind = queue_.Waiting(mode_) > kMostShownBehind;
  lock.unlock();
  board_->NoteTry();
  decoder_.Decode(*unit, [this, is_behind](const AVFrame& picture, qint64 taken_ms) {
    if (!is_behind || SteadyMs() - shown_ms_ >= kLongestUnshownMs) {
      Show(picture, taken_ms);
    }
  });
  lock.lock();
  return queue_.Waiting(mode_) > 0;
}

void CStreamDecoder::Show(const AVFrame& picture, qint64 taken_ms) {
  const QSize coded(picture.width, picture.height);
  PicturesBySize pictures;
  std::map<std::pair<int, int>, std::unique_ptr<CPictureScaler>> used;
  for (const QSize& size : board_->SizesFor(coded)) {
    std::unique_ptr<CPictureScaler> scaler = std::move(scalers_[{size.width(), size.height()}]);
    if (!scaler) {
      scaler = std::make_unique<CPictureScaler>();
    }
    const QImage image = scaler->Scale(picture, size);
    if (!image.isNull()) {
      pictures.insert({size.width(), size.height()}, image);
    }
    used[{size.width(), size.height()}] = std::move(scaler);
  }
  scalers_ = std::move(used);
  if (!pictures.isEmpty()) {
    board_->Post(coded, std::move(pictures), taken_ms);
    shown_ms_ = SteadyMs();
  }
}

}  // namespace TarnClient
