#pragma once

#include <QImage>
#include <QSize>

#include "pictures/picture_status.h"

namespace TarnClient {

/// How much it matters to the user that this source has all its pictures.
enum class PictureWeight { Normal, InFocus };

/// Moving pictures of one camera. A window of the wall asks for the latest picture whenever it is about to paint, so
/// a source never waits for its viewer. Thread: GUI; an implementation may work in threads of its own.
class IPictureSource {
 public:
  virtual ~IPictureSource() = default;

  virtual void Start() = 0;
  /// Returns at once; no picture comes after it.
  virtual void Stop() = 0;
  virtual PictureStatus Status() const = 0;
  /// The latest picture, about as large as `wanted`, in pixels of the screen; a null image while there is none. The
  /// last one stays while the camera is late or lost.
  virtual QImage LatestPicture(const QSize& wanted) = 0;
  /// Number of the latest picture; it changes exactly when there is a new one.
  virtual qint64 LatestNumber() const = 0;
  /// A source in focus is the last to lose pictures when the machine cannot decode all.
  virtual void SetWeight(PictureWeight weight) { Q_UNUSED(weight) }
};

}  // namespace TarnClient
