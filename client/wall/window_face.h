#pragma once

#include <QImage>
#include <QRect>
#include <QString>
#include <QTime>

#include "wall/window_truth.h"
#include "wall/zoom.h"

class QPainter;

namespace TarnClient {

/// What a window of the wall looks like. A plain value.
struct WindowFace {
  enum class Frame { None, Current, Focus, Target };

  bool has_camera = false;
  QString camera;
  QImage picture;
  WindowTruth truth;
  CZoom zoom;
  QTime now;
  Frame frame = Frame::None;
};

/// Where a picture of this size stands in the window.
QRect PictureRoom(const QSize& window, const QSize& picture);

void PaintFace(QPainter* painter, const QRect& window, const WindowFace& face);

}  // namespace TarnClient
