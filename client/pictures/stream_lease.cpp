#include "pictures/stream_lease.h"

#include <utility>

#include "pictures/live_stream.h"

namespace TarnClient {

namespace {

constexpr qint64 kLookLastsMs = 3000;

}  // namespace

CStreamLease::CStreamLease(std::shared_ptr<CLiveStream> stream, StreamUse use, int order)
    : stream_(std::move(stream)), use_(use), order_(order), looked_ms_(SteadyMs()) {
  stream_->Add(this);
  stream_->ChooseMode(looked_ms_);
}

CStreamLease::~CStreamLease() {
  stream_->Remove(this, SteadyMs());
}

PictureStatus CStreamLease::Status() const {
  return stream_->Board().Status(SteadyMs());
}

QImage CStreamLease::Latest(const QSize& wanted) {
  Look();
  return stream_->Board().Latest(this, wanted);
}

qint64 CStreamLease::Number() {
  Look();
  return stream_->Board().Number();
}

bool CStreamLease::IsLookedAt(qint64 now_ms) const {
  return use_ == StreamUse::Shown && now_ms - looked_ms_ < kLookLastsMs;
}

void CStreamLease::Look() {
  const qint64 now = SteadyMs();
  const bool was_looked_at = IsLookedAt(now);
  looked_ms_ = now;
  if (!was_looked_at) {
    stream_->ChooseMode(now);
  }
}

}  // namespace TarnClient
