#pragma once

#include <QColor>
#include <cmath>

namespace TarnTest {

inline double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// From 1, the same, to 21, black and white; 3 is the least for what must be seen, 4.5 for what must be read.
inline double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one), b = Luminance(other);
  return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

}  // namespace TarnTest
