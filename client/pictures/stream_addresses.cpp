#include "pictures/stream_addresses.h"

#include <utility>

#include "host_calls/ask.h"

namespace TarnClient {

namespace {

constexpr int kAgainMs = 2000;

}  // namespace

CStreamAddresses::CStreamAddresses(StreamAddressReader reader, QObject* parent)
    : QObject(parent), reader_(std::move(reader)) {
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &CStreamAddresses::Ask);
}

const CameraStreams& CStreamAddresses::Of(const std::string& camera) {
  const auto found = known_.find(camera);
  if (found != known_.end()) {
    return found->second;
  }
  wanted_.insert(camera);
  AskSoon();
  return known_[camera];
}

void CStreamAddresses::Renew() {
  for (const auto& entry : known_) {
    wanted_.insert(entry.first);
  }
  AskSoon();
}

// All windows of a page together.
void CStreamAddresses::AskSoon() {
  if (!soon_.isActive()) {
    soon_.start(0);
  }
}

void CStreamAddresses::Ask() {
  if (wanted_.empty() || question_.IsUnderWay()) {
    return;
  }
  const std::set<std::string> wanted = std::exchange(wanted_, {});
  const std::vector<std::string> cameras(wanted.begin(), wanted.end());
  HostCalls::Ask([reader = reader_, cameras] { return reader(cameras); })
      .Within(question_)
      .Then(this, [this, cameras](const std::optional<CameraStreamsByCode>& read) {
        if (read) {
          Take(cameras, *read);
          soon_.start(0);  // for what was asked for meanwhile
        } else {
          wanted_.insert(cameras.begin(), cameras.end());
          soon_.start(kAgainMs);
        }
      });
}

// A copy of the store knows less than this desk may have read before the store was lost.
void CStreamAddresses::Take(const std::vector<std::string>& asked, const CameraStreamsByCode& read) {
  for (const std::string& camera : asked) {
    CameraStreams& known = known_[camera];
    const auto found = read.find(camera);
    if (found != read.end()) {
      const bool is_less = known.state == CameraStreams::Known && found->second.state == CameraStreams::NeedsStore;
      if (!is_less) {
        known = found->second;
      }
    } else {
      known = CameraStreams();
      known.state = CameraStreams::Removed;
    }
  }
  Q_EMIT SignalRead();
}

}  // namespace TarnClient
