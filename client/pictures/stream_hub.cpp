#include "pictures/stream_hub.h"

#include <algorithm>
#include <vector>

#include "pictures/decoding_pool.h"
#include "pictures/live_stream.h"
#include "pictures/stream_lease.h"
#include "pictures/stream_network.h"

namespace TarnClient {

namespace {

constexpr qint64 kLookMs = 500, kBehindMs = 500;

}  // namespace

CStreamHub::CStreamHub(const StreamTimings& timings, int threads)
    : timings_(timings),
      pool_(std::make_shared<CDecodingPool>(threads)),
      network_(std::make_shared<CStreamNetwork>(timings)) {
  connect(&timer_, &QTimer::timeout, this, &CStreamHub::Look);
  timer_.start(static_cast<int>(std::min(kLookMs, std::max<qint64>(1, timings.linger / 4))));
}

CStreamHub::~CStreamHub() = default;

std::unique_ptr<CStreamLease> CStreamHub::Take(const StreamKey& key, const StreamAccess& access, StreamUse use) {
  std::shared_ptr<CLiveStream>& stream = streams_[key];
  if (!stream) {
    stream = std::make_shared<CLiveStream>(network_, pool_, access, timings_);
  }
  return std::make_unique<CStreamLease>(stream, use, ++leases_);
}

bool CStreamHub::HasPicture(const StreamKey& key) const {
  const auto found = streams_.find(key);
  return found != streams_.end() && found->second->Board().Status(SteadyMs()).state == PictureState::Live;
}

std::optional<qint64> CStreamHub::KeyFrameMs(const StreamKey& key) const {
  const auto stream = streams_.find(key);
  if (stream != streams_.end()) {
    const std::optional<qint64> measured = stream->second->Board().KeyFrameMs();
    if (measured) {
      return measured;
    }
  }
  const auto known = key_frame_ms_.find(key);
  if (known == key_frame_ms_.end()) {
    return std::nullopt;
  }
  return known->second;
}

void CStreamHub::Renew(const StreamKey& key, const StreamAccess& access) {
  const auto found = streams_.find(key);
  if (found != streams_.end() && found->second->Access() != access) {
    found->second->Reopen(access);
  }
}

void CStreamHub::Forget(const StreamKey& key) {
  streams_.erase(key);
  key_frame_ms_.erase(key);
}

void CStreamHub::Look() {
  const qint64 now = SteadyMs();
  CloseUnused(now);
  Shed(now);
}

void CStreamHub::CloseUnused(qint64 now_ms) {
  for (auto entry = streams_.begin(); entry != streams_.end();) {
    const std::optional<qint64> since = entry->second->UnusedSince();
    if (since && now_ms - *since >= timings_.linger) {
      if (const std::optional<qint64> measured = entry->second->Board().KeyFrameMs()) {
        key_frame_ms_[entry->first] = *measured;
      }
      entry = streams_.erase(entry);
    } else {
      ++entry;
    }
  }
}

// Those that came last go first.
void CStreamHub::Shed(qint64 now_ms) {
  std::vector<CLiveStream*> sheddable;
  qint64 longest_wait = 0;
  for (const auto& entry : streams_) {
    CLiveStream* const stream = entry.second.get();
    longest_wait = std::max(longest_wait, stream->WaitMs(now_ms));
    if (stream->IsShown(now_ms) && !stream->IsInFocus()) {
      sheddable.push_back(stream);
    } else {
      stream->SetShed(false);
    }
  }
  std::sort(sheddable.begin(), sheddable.end(),
            [](const CLiveStream* left, const CLiveStream* right) { return left->Order() > right->Order(); });
  int left = shedding_.Take(now_ms, longest_wait > kBehindMs, pool_->TakeLoad(), static_cast<int>(sheddable.size()));
  for (CLiveStream* stream : sheddable) {
    stream->SetShed(left-- > 0);
  }
  for (const auto& entry : streams_) {
    entry.second->ChooseMode(now_ms);
  }
}

}  // namespace TarnClient
