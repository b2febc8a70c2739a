#pragma once

#include <QPointF>
#include <QRectF>

namespace TarnClient {

/// How far a window looks into its picture. Places in the picture and in the window's view of it go from 0 to 1.
class CZoom {
 public:
  static constexpr double kMost = 8.0;

  double Factor() const { return factor_; }
  bool IsOn() const { return factor_ > 1.0; }
  /// What of the picture is in sight.
  QRectF Part() const { return QRectF(corner_, QSizeF(1.0 / factor_, 1.0 / factor_)); }
  /// In, or out for less than 1; what is at this place of the view stays there as far as the picture goes.
  void By(double factor, const QPointF& at);
  /// The picture follows the hand by so much of the view.
  void Drag(const QPointF& by);
  void Reset() { *this = CZoom(); }

 private:
  void MoveTo(const QPointF& corner);

  double factor_ = 1.0;
  QPointF corner_;
};

}  // namespace TarnClient
