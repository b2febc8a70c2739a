#pragma once

#include <QObject>
#include <QTimer>
#include <map>

#include "pictures/decoding_pool.h"
#include "pictures/picture_supply.h"
#include "pictures/stream_picture_source.h"
#include "pictures/stream_timings.h"

namespace TarnClient {

/// Pictures of the site's cameras. At its end every camera is said goodbye to, which takes a moment. Thread: GUI.
class CStreamSupply : public QObject, public IPictureSupply {
  Q_OBJECT
 public:
  struct Setup {
    StreamAddressReader addresses;
    std::function<bool(const std::string& camera)> is_online;  // as the site says; unset: all are
    StreamTimings timings = {};
    int threads = CDecodingPool::UsualThreads();
  };

  explicit CStreamSupply(Setup setup);
  ~CStreamSupply() override;

  std::unique_ptr<IPictureSource> Open(const view_plugin_protocol::PlanWindow& window) override;
  void Prepare(const void* viewer, const QVector<view_plugin_protocol::PlanWindow>& next) override;
  std::optional<qint64> KeyFrameMs(const view_plugin_protocol::PlanWindow& window) const override;
  /// Cameras were changed at the site.
  void RenewAddresses();

 private:
  using Windows = QVector<view_plugin_protocol::PlanWindow>;
  using Leases = std::vector<std::unique_ptr<CStreamLease>>;

  void OnAddresses();
  void Apply(const std::string& camera, const CameraStreams& streams);
  void Advance();
  Leases LeasesFor(const Windows& windows);

  const std::shared_ptr<StreamDesk> desk_;
  struct Prepared {
    Windows windows;
    Leases leases;
  };
  std::map<const void*, Prepared> prepared_;  // by viewer
  QTimer timer_{this};
};

}  // namespace TarnClient
