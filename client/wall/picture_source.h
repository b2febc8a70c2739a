#pragma once

#include <QImage>
#include <QSize>
#include <functional>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// Moving pictures of one camera. A window of the wall asks for the latest picture whenever it is about to paint, so
/// a source never waits for its viewer. Thread: GUI; an implementation may work in threads of its own.
class IPictureSource {
 public:
  enum class State { Stopped, Opening, Live, Lost };

  virtual ~IPictureSource() = default;

  virtual void Start() = 0;
  /// Returns at once; no picture comes after it.
  virtual void Stop() = 0;
  virtual State GetState() const = 0;
  /// The latest picture, about as large as `wanted`; a null image while there is none.
  virtual QImage LatestPicture(const QSize& wanted) = 0;
  /// Number of the latest picture; it changes exactly when there is a new one.
  virtual qint64 LatestNumber() const = 0;
};

/// Makes the source of a window's camera.
using PictureSourceFactory =
    std::function<std::unique_ptr<IPictureSource>(const view_plugin_protocol::PlanWindow& window)>;

}  // namespace TarnClient
