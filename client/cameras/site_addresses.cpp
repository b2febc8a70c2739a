#include "cameras/site_addresses.h"

#include "TarnHost/host_services.h"

namespace TarnClient {

namespace {

constexpr int32_t kMain = 0;

CameraStreams StreamsOf(const TarnHost::CameraAccess& camera, const TarnHost::CameraAccessList& list) {
  CameraStreams streams;
  if (camera.needs_store) {
    streams.state = CameraStreams::NeedsStore;
    return streams;
  }
  streams.state = CameraStreams::NoAddress;
  if (list.is_pretended) {
    streams.state = CameraStreams::Drawn;
  }
  for (const TarnHost::CameraStream& stream : camera.streams) {
    if (stream.url.empty()) {
      continue;
    }
    StreamKind kind = StreamKind::Sub;
    if (stream.type == kMain) {
      kind = StreamKind::Main;
    }
    streams.state = CameraStreams::Known;
    streams.Of(kind) = StreamAccess{QString::fromStdString(stream.url), QString::fromStdString(camera.user),
                                    camera.secret, QByteArray::fromStdString(list.authority)};
  }
  return streams;
}

}  // namespace

std::optional<CameraStreamsByCode> ReadSiteAddresses(const std::vector<std::string>& cameras) {
  const auto services = TarnHost::InstalledHostServices();
  if (!services) {
    return std::nullopt;
  }
  TarnHost::CameraAccessList list;
  std::string error;
  if (!services->GetCameraAccess(cameras, list, &error)) {
    return std::nullopt;
  }
  CameraStreamsByCode streams;
  for (const TarnHost::CameraAccess& camera : list.cameras) {
    streams[camera.index_code] = StreamsOf(camera, list);
  }
  return streams;
}

}  // namespace TarnClient
