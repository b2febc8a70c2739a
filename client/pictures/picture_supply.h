#pragma once

#include <QVector>
#include <functional>
#include <memory>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_source.h"

namespace TarnClient {

/// Where the windows of all walls get their pictures from. Thread: GUI.
class IPictureSupply {
 public:
  virtual ~IPictureSupply() = default;

  /// The source of this window's camera, not started; never null. It may outlive the supply and has no pictures then.
  virtual std::unique_ptr<IPictureSource> Open(const view_plugin_protocol::PlanWindow& window) = 0;
  /// What `viewer` is about to show: these cameras are connected meanwhile. Replaces what it said last; an empty list
  /// when it shows nothing next.
  virtual void Prepare(const void* viewer, const QVector<view_plugin_protocol::PlanWindow>& next) = 0;
  /// How long the stream that is prepared for this window may take until it has a picture, once it is connected: the
  /// time between two of its key frames, as it was measured when it was connected last. Empty while it never was.
  virtual std::optional<qint64> KeyFrameMs(const view_plugin_protocol::PlanWindow& window) const {
    Q_UNUSED(window)
    return std::nullopt;
  }
};

/// Makes the source of a window's camera.
using PictureSourceFactory =
    std::function<std::unique_ptr<IPictureSource>(const view_plugin_protocol::PlanWindow& window)>;

/// Sources that need no time to open.
class CReadyPictureSupply : public IPictureSupply {
 public:
  explicit CReadyPictureSupply(PictureSourceFactory factory) : factory_(std::move(factory)) {}

  std::unique_ptr<IPictureSource> Open(const view_plugin_protocol::PlanWindow& window) override {
    return factory_(window);
  }
  void Prepare(const void*, const QVector<view_plugin_protocol::PlanWindow>&) override {}

 private:
  const PictureSourceFactory factory_;
};

}  // namespace TarnClient
