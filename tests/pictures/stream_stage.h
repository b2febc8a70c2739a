#pragma once

#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "block_code.h"
#include "camera_server.h"
#include "pictures/stream_supply.h"

namespace TarnTest {

/// A window of a plan that shows this camera.
inline view_plugin_protocol::PlanWindow CameraWindow(int camera, int stream_type = 0) {
  view_plugin_protocol::PlanWindow window;
  window.window_no = 1;
  window.content_kind = 1;
  window.resource_code = std::to_string(camera);
  window.resource_name = "CAM " + window.resource_code;
  window.stream_type = stream_type;
  return window;
}

/// Windows that show pictures of cameras whose addresses a test gives.
class CStreamStage {
 public:
  static constexpr int kTall = 480, kSmall = 120;  // heights of windows that show the main and the smaller stream

  explicit CStreamStage(TarnClient::StreamTimings timings = Quick()) {
    TarnClient::CStreamSupply::Setup setup;
    setup.addresses = [this](const std::vector<std::string>& cameras) { return Read(cameras); };
    setup.is_online = [this](const std::string& camera) { return offline_.count(camera) == 0; };
    setup.timings = timings;
    supply_ = std::make_unique<TarnClient::CStreamSupply>(std::move(setup));
  }

  static TarnClient::StreamTimings Quick() {
    TarnClient::StreamTimings timings;
    timings.open = 1500;
    timings.read = 1500;
    timings.late = 700;
    timings.linger = 600;
    timings.retry = 200;
    timings.spread = 300;
    timings.goodbye = 500;
    return timings;
  }

  TarnClient::CStreamSupply& Supply() { return *supply_; }
  void End() { supply_.reset(); }

  void SetAddress(int camera, const QString& url, const QString& sub = {}, const QString& user = {},
                  const std::string& secret = {}, const QByteArray& authority = {}) {
    TarnClient::CameraStreams streams;
    streams.state = TarnClient::CameraStreams::Known;
    streams.Of(TarnClient::StreamKind::Main) =
        TarnClient::StreamAccess{url, user, TarnHost::CSecret(secret), authority};
    if (!sub.isEmpty()) {
      streams.Of(TarnClient::StreamKind::Sub) =
          TarnClient::StreamAccess{sub, user, TarnHost::CSecret(secret), authority};
    }
    streams_[std::to_string(camera)] = streams;
  }
  void SetState(int camera, TarnClient::CameraStreams::State state) {
    TarnClient::CameraStreams streams;
    streams.state = state;
    streams_[std::to_string(camera)] = streams;
  }
  void Remove(int camera) { streams_.erase(std::to_string(camera)); }
  void SetOffline(int camera, bool offline) {
    if (offline) {
      offline_.insert(std::to_string(camera));
    } else {
      offline_.erase(std::to_string(camera));
    }
  }

  /// A source that is started and was painted once in a window of that height.
  std::unique_ptr<TarnClient::IPictureSource> Show(int camera, int height = kTall, int stream_type = 0) {
    auto source = supply_->Open(CameraWindow(camera, stream_type));
    source->Start();
    source->LatestPicture(SizeOf(height));
    return source;
  }
  static QSize SizeOf(int height) { return {height * 4 / 3, height}; }

 private:
  std::optional<TarnClient::CameraStreamsByCode> Read(const std::vector<std::string>& cameras) const {
    TarnClient::CameraStreamsByCode read;
    for (const std::string& camera : cameras) {
      const auto found = streams_.find(camera);
      if (found != streams_.end()) {
        read.insert(*found);
      }
    }
    return read;
  }

  // Tests change them only while nothing is asked.
  TarnClient::CameraStreamsByCode streams_;
  std::set<std::string> offline_;
  std::unique_ptr<TarnClient::CStreamSupply> supply_;
};

/// The block of the source's picture in a window of that height.
inline std::optional<TarnDemo::BlockCode> Shown(TarnClient::IPictureSource& source, int height = CStreamStage::kTall) {
  source.LatestNumber();
  return TarnDemo::ReadBlock(source.LatestPicture(CStreamStage::SizeOf(height)));
}

inline int CameraIn(TarnClient::IPictureSource& source, int height = CStreamStage::kTall) {
  return Shown(source, height).value_or(TarnDemo::BlockCode()).camera;
}

}  // namespace TarnTest
