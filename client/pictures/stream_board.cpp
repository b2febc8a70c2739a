#include "pictures/stream_board.h"

#include <utility>

#include "pictures/picture_size.h"

namespace TarnClient {

using Guard = std::lock_guard<std::mutex>;

namespace {

QPair<int, int> KeyOf(const QSize& size) {
  return {size.width(), size.height()};
}

}  // namespace

// That what comes cannot be made out is over with the first picture only.
void CStreamBoard::SetPlaying() {
  const Guard lock(mutex_);
  facts_.playing = true;
  if (facts_.loss != PictureLoss::UnknownCodec) {
    facts_.loss = PictureLoss::None;
  }
  facts_.tries = 0;
  facts_.key_frames.Pause();
}

void CStreamBoard::SetLoss(PictureLoss loss) {
  const Guard lock(mutex_);
  facts_.playing = false;
  facts_.loss = loss;
  facts_.repeats = false;
}

void CStreamBoard::NoteUnit(qint64 arrived_ms, bool is_key, bool repeats) {
  const Guard lock(mutex_);
  if (is_key) {
    facts_.key_frames.Take(arrived_ms);
  }
  facts_.repeats = repeats;
}

bool CStreamBoard::IsUnreadable(qint64 now_ms) const {
  const Guard lock(mutex_);
  return TarnClient::IsUnreadable(facts_, now_ms, timings_);
}

void CStreamBoard::NoteTry() {
  const Guard lock(mutex_);
  if (facts_.tries++ == 0) {
    facts_.first_try_ms = SteadyMs();
  }
}

QVector<QSize> CStreamBoard::SizesFor(const QSize& coded) const {
  const Guard lock(mutex_);
  QVector<QSize> sizes;
  for (const QSize& wanted : wanted_) {
    const QSize size = HandedSize(coded, wanted);
    if (!sizes.contains(size)) {
      sizes.append(size);
    }
  }
  if (sizes.isEmpty()) {
    sizes.append(HandedSize(coded, QSize()));
  }
  return sizes;
}

void CStreamBoard::Post(const QSize& coded, PicturesBySize pictures, qint64 taken_ms) {
  const Guard lock(mutex_);
  pictures_ = std::move(pictures);
  facts_.size = coded;
  facts_.taken_ms = taken_ms;
  facts_.tries = 0;
  if (facts_.playing) {
    facts_.loss = PictureLoss::None;
  }
  ++number_;
}

void CStreamBoard::SetMode(DecodingMode mode, bool shed) {
  const Guard lock(mutex_);
  facts_.decodes_key_frames = mode == DecodingMode::KeyFrames;
  facts_.key_frames_only = shed;
}

PictureStatus CStreamBoard::Status(qint64 now_ms) const {
  const Guard lock(mutex_);
  return StatusOf(facts_, now_ms, timings_);
}

// Until the decoder has heard of a new size, any other one is better than none.
QImage CStreamBoard::Latest(const void* viewer, const QSize& wanted) {
  const Guard lock(mutex_);
  wanted_.insert(viewer, wanted);
  if (pictures_.isEmpty()) {
    return QImage();
  }
  return pictures_.value(KeyOf(HandedSize(facts_.size, wanted)), *pictures_.constBegin());
}

void CStreamBoard::Leave(const void* viewer) {
  const Guard lock(mutex_);
  wanted_.remove(viewer);
}

std::optional<qint64> CStreamBoard::KeyFrameMs() const {
  const Guard lock(mutex_);
  return facts_.key_frames.IntervalMs();
}

qint64 CStreamBoard::Number() const {
  const Guard lock(mutex_);
  return number_;
}

}  // namespace TarnClient
