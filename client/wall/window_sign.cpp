#include "wall/window_sign.h"

#include <QPainter>

namespace TarnClient {

namespace {

using Sign = WindowTruth::Sign;

// Places from 0 to 1 of the sign's square.
class CSquare {
 public:
  explicit CSquare(const QRectF& place) : place_(place) {}
  QPointF At(double x, double y) const {
    return QPointF(place_.x() + x * place_.width(), place_.y() + y * place_.height());
  }
  double Long(double part) const { return part * place_.width(); }

 private:
  const QRectF place_;
};

void PaintDots(QPainter* painter, const CSquare& square) {
  painter->setBrush(painter->pen().color());
  for (const double x : {0.2, 0.5, 0.8}) {
    painter->drawEllipse(square.At(x, 0.5), square.Long(0.05), square.Long(0.05));
  }
}

void PaintClock(QPainter* painter, const CSquare& square) {
  painter->drawEllipse(square.At(0.5, 0.5), square.Long(0.42), square.Long(0.42));
  painter->drawLine(square.At(0.5, 0.5), square.At(0.5, 0.24));
  painter->drawLine(square.At(0.5, 0.5), square.At(0.7, 0.6));
}

void PaintWarning(QPainter* painter, const CSquare& square) {
  painter->drawPolygon(QPolygonF({square.At(0.5, 0.1), square.At(0.95, 0.88), square.At(0.05, 0.88)}));
  painter->drawLine(square.At(0.5, 0.38), square.At(0.5, 0.62));
  painter->drawPoint(square.At(0.5, 0.76));
}

// A camera that is struck out.
void PaintOffline(QPainter* painter, const CSquare& square) {
  painter->drawRoundedRect(QRectF(square.At(0.08, 0.3), square.At(0.64, 0.74)), square.Long(0.06), square.Long(0.06));
  painter->drawPolygon(QPolygonF({square.At(0.64, 0.5), square.At(0.94, 0.32), square.At(0.94, 0.72)}));
  painter->drawLine(square.At(0.1, 0.94), square.At(0.9, 0.08));
}

}  // namespace

void PaintSign(QPainter* painter, const QRectF& place, Sign sign, const QColor& color) {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(QPen(color, qMax(1.5, place.width() / 12), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->setBrush(Qt::NoBrush);
  const CSquare square(place);
  switch (sign) {
    case Sign::None:
      break;
    case Sign::Waiting:
      PaintDots(painter, square);
      break;
    case Sign::Late:
      PaintClock(painter, square);
      break;
    case Sign::Lost:
      PaintWarning(painter, square);
      break;
    case Sign::Offline:
      PaintOffline(painter, square);
      break;
  }
  painter->restore();
}

}  // namespace TarnClient
