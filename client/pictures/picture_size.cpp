#include "pictures/picture_size.h"

namespace TarnClient {

namespace {

constexpr int kGrid = 32;
constexpr QSize kUnasked(640, 480);
// Scaling down by less than that costs more than it saves.
constexpr double kWorthScaling = 0.8;

}  // namespace

QSize HandedSize(const QSize& coded, const QSize& wanted) {
  QSize room = wanted;
  if (room.isEmpty()) {
    room = kUnasked;
  }
  const int fitting = coded.scaled(room, Qt::KeepAspectRatio).width();
  const int width = (fitting + kGrid - 1) / kGrid * kGrid;
  if (width >= kWorthScaling * coded.width()) {
    return coded;
  }
  const int height = qRound(double(width) * coded.height() / coded.width());
  return QSize(width, qMax(2, (height + 1) / 2 * 2));
}

}  // namespace TarnClient
