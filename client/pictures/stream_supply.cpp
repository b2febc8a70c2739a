#include "pictures/stream_supply.h"

#include <utility>

#include "pictures/stream_lease.h"

namespace TarnClient {

namespace {

constexpr int kAdvanceMs = 100;

// The larger stream that the plan allows, where the size of the window is not known yet: its picture does for the
// beginning.
std::optional<StreamKind> PreparedKind(const CameraStreams& streams, const view_plugin_protocol::PlanWindow& window) {
  const StreamKind planned = PlannedKind(window);
  for (const StreamKind kind : {planned, OtherKind(planned)}) {
    if (streams.Of(kind)) {
      return kind;
    }
  }
  return std::nullopt;
}

}  // namespace

CStreamSupply::CStreamSupply(Setup setup) : desk_(std::make_shared<StreamDesk>()) {
  desk_->hub = std::make_unique<CStreamHub>(setup.timings, setup.threads);
  desk_->addresses = std::make_unique<CStreamAddresses>(std::move(setup.addresses));
  desk_->is_online = std::move(setup.is_online);
  connect(desk_->addresses.get(), &CStreamAddresses::SignalRead, this, &CStreamSupply::OnAddresses);
  connect(&timer_, &QTimer::timeout, this, &CStreamSupply::Advance);
  timer_.start(kAdvanceMs);
}

CStreamSupply::~CStreamSupply() {
  prepared_.clear();
}

std::unique_ptr<IPictureSource> CStreamSupply::Open(const view_plugin_protocol::PlanWindow& window) {
  return std::make_unique<CStreamPictureSource>(desk_, window);
}

void CStreamSupply::Prepare(const void* viewer, const Windows& next) {
  if (next.isEmpty()) {
    prepared_.erase(viewer);
    return;
  }
  Leases leases = LeasesFor(next);  // before the old ones go, which may be the same
  prepared_[viewer] = {next, std::move(leases)};
}

CStreamSupply::Leases CStreamSupply::LeasesFor(const Windows& windows) {
  Leases leases;
  for (const auto& window : windows) {
    if (window.resource_code.empty() || (desk_->is_online && !desk_->is_online(window.resource_code))) {
      continue;
    }
    const CameraStreams& streams = desk_->addresses->Of(window.resource_code);
    if (const std::optional<StreamKind> kind = PreparedKind(streams, window)) {
      leases.push_back(desk_->hub->Take({window.resource_code, *kind}, *streams.Of(*kind), StreamUse::Prepared));
    }
  }
  return leases;
}

std::optional<qint64> CStreamSupply::KeyFrameMs(const view_plugin_protocol::PlanWindow& window) const {
  const auto streams = desk_->addresses->All().find(window.resource_code);
  if (streams == desk_->addresses->All().end()) {
    return std::nullopt;
  }
  const std::optional<StreamKind> kind = PreparedKind(streams->second, window);
  if (!kind) {
    return std::nullopt;
  }
  return desk_->hub->KeyFrameMs({window.resource_code, *kind});
}

void CStreamSupply::RenewAddresses() {
  desk_->addresses->Renew();
}

void CStreamSupply::OnAddresses() {
  for (const auto& known : desk_->addresses->All()) {
    Apply(known.first, known.second);
  }
  for (auto& entry : prepared_) {
    entry.second.leases = LeasesFor(entry.second.windows);
  }
  Advance();
}

void CStreamSupply::Apply(const std::string& camera, const CameraStreams& streams) {
  for (const StreamKind kind : {StreamKind::Main, StreamKind::Sub}) {
    if (streams.Of(kind)) {
      desk_->hub->Renew({camera, kind}, *streams.Of(kind));
    } else {
      desk_->hub->Forget({camera, kind});
    }
  }
}

void CStreamSupply::Advance() {
  for (CStreamPictureSource* source : desk_->sources) {
    source->Advance();
  }
}

}  // namespace TarnClient
