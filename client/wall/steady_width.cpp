#include "wall/steady_width.h"

namespace TarnClient {

namespace {

QChar WidestDigit(const QFontMetrics& metrics) {
  QChar widest = QLatin1Char('0');
  for (char digit = '1'; digit <= '9'; ++digit) {
    if (metrics.horizontalAdvance(QLatin1Char(digit)) > metrics.horizontalAdvance(widest)) {
      widest = QLatin1Char(digit);
    }
  }
  return widest;
}

}  // namespace

int SteadyWidth(const QFontMetrics& metrics, QString text) {
  const QChar digit = WidestDigit(metrics);
  for (QChar& letter : text) {
    if (letter.isDigit()) {
      letter = digit;
    }
  }
  return metrics.horizontalAdvance(text);
}

}  // namespace TarnClient
