#pragma once

#include <QObject>
#include <QTimer>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

#include "pictures/load_shedding.h"
#include "pictures/stream_access.h"
#include "pictures/stream_timings.h"

namespace TarnClient {

class CDecodingPool;
class CLiveStream;
class CStreamLease;
class CStreamNetwork;
enum class StreamUse;

struct StreamKey {
  std::string camera;
  StreamKind kind = StreamKind::Main;
  bool operator<(const StreamKey& other) const { return std::tie(camera, kind) < std::tie(other.camera, other.kind); }
};

/// All streams: one connection and one decoder for each camera and kind, however many windows show it. Thread: GUI.
class CStreamHub : public QObject {
  Q_OBJECT
 public:
  CStreamHub(const StreamTimings& timings, int threads);
  ~CStreamHub() override;

  /// The stream stays connected while there is a lease of it, and a little longer. One that is only prepared has a
  /// picture to begin with once it is looked at.
  std::unique_ptr<CStreamLease> Take(const StreamKey& key, const StreamAccess& access, StreamUse use);
  /// Whether it has a picture that can be shown at once.
  bool HasPicture(const StreamKey& key) const;
  /// Between two key frames of it, also where it is not connected any more; empty while that is not known.
  std::optional<qint64> KeyFrameMs(const StreamKey& key) const;
  /// It is reached in another way from now on; nothing is kept of what it showed.
  void Renew(const StreamKey& key, const StreamAccess& access);
  /// It is closed as soon as there is no lease of it.
  void Forget(const StreamKey& key);

 private:
  void Look();
  void CloseUnused(qint64 now_ms);
  void Shed(qint64 now_ms);

  const StreamTimings timings_;
  const std::shared_ptr<CDecodingPool> pool_;
  const std::shared_ptr<CStreamNetwork> network_;
  std::map<StreamKey, std::shared_ptr<CLiveStream>> streams_;
  std::map<StreamKey, qint64> key_frame_ms_;  // of those that are not connected any more
  CLoadShedding shedding_;
  int leases_ = 0;  // that were ever taken
  QTimer timer_{this};
};

}  // namespace TarnClient
