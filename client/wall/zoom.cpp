#include "wall/zoom.h"

#include <QtGlobal>

namespace TarnClient {

namespace {

constexpr double kNearlyWhole = 1.01;

}  // namespace

void CZoom::By(double factor, const QPointF& at) {
  const QPointF kept = corner_ + at / factor_;
  factor_ = qBound(1.0, factor_ * factor, kMost);
  if (factor_ < kNearlyWhole) {
    return Reset();
  }
  MoveTo(kept - at / factor_);
}

void CZoom::Drag(const QPointF& by) {
  MoveTo(corner_ - by / factor_);
}

void CZoom::MoveTo(const QPointF& corner) {
  const double most = 1.0 - 1.0 / factor_;
  corner_ = QPointF(qBound(0.0, corner.x(), most), qBound(0.0, corner.y(), most));
}

}  // namespace TarnClient
