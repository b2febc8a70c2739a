#include "pictures/live_stream.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "pictures/stream_lease.h"
#include "pictures/stream_network.h"

namespace TarnClient {

CLiveStream::CLiveStream(std::weak_ptr<CStreamNetwork> network, std::weak_ptr<CDecodingPool> pool, StreamAccess access,
                         const StreamTimings& timings)
    : network_(std::move(network)), pool_(std::move(pool)), timings_(timings), access_(std::move(access)) {
  Open(-1);
}

CLiveStream::~CLiveStream() {
  Close();
}

// Board and decoder are new, too: the old ones may still hear of the old connection.
void CLiveStream::Open(qint64 number) {
  receivers_.board = std::make_shared<CStreamBoard>(timings_, number);
  receivers_.decoder = std::make_shared<CStreamDecoder>(pool_, receivers_.board, timings_);
  receivers_.decoder->SetMode(mode_);
  receivers_.board->SetMode(mode_, false);
  if (const auto network = network_.lock()) {
    connection_ = network->Open(access_, receivers_, connection_);
  }
}

void CLiveStream::Close() {
  if (const auto network = network_.lock()) {
    network->Close(connection_);
  }
}

void CLiveStream::Reopen(const StreamAccess& access) {
  Close();
  access_ = access;
  Open(receivers_.board->Number());
}

void CLiveStream::Add(CStreamLease* lease) {
  leases_.push_back(lease);
  unused_since_.reset();
}

void CLiveStream::Remove(CStreamLease* lease, qint64 now_ms) {
  leases_.erase(std::remove(leases_.begin(), leases_.end(), lease), leases_.end());
  receivers_.board->Leave(lease);
  if (leases_.empty()) {
    unused_since_ = now_ms;
  }
  ChooseMode(now_ms);
}

bool CLiveStream::IsShown(qint64 now_ms) const {
  return std::any_of(leases_.begin(), leases_.end(),
                     [now_ms](const CStreamLease* lease) { return lease->IsLookedAt(now_ms); });
}

bool CLiveStream::IsInFocus() const {
  return std::any_of(leases_.begin(), leases_.end(), [](const CStreamLease* lease) { return lease->IsInFocus(); });
}

int CLiveStream::Order() const {
  int order = std::numeric_limits<int>::max();
  for (const CStreamLease* lease : leases_) {
    order = std::min(order, lease->Order());
  }
  return order;
}

qint64 CLiveStream::WaitMs(qint64 now_ms) const {
  if (mode_ != DecodingMode::All || !IsShown(now_ms)) {
    return 0;
  }
  return receivers_.decoder->WaitMs();
}

void CLiveStream::ChooseMode(qint64 now_ms) {
  const bool is_shown = IsShown(now_ms);
  DecodingMode mode = DecodingMode::KeyFrames;
  if (is_shown && !shed_) {
    mode = DecodingMode::All;
  }
  receivers_.board->SetMode(mode, is_shown && shed_);
  if (mode != std::exchange(mode_, mode)) {
    receivers_.decoder->SetMode(mode);
  }
}

}  // namespace TarnClient
