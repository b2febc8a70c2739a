#pragma once

#include <QColor>
#include <QRectF>

#include "wall/window_truth.h"

class QPainter;

namespace TarnClient {

/// Draws the sign in lines of one colour, each of another shape; nothing for no sign.
void PaintSign(QPainter* painter, const QRectF& place, WindowTruth::Sign sign, const QColor& color);

}  // namespace TarnClient
