#include "history/shown_time.h"

#include <QLocale>

namespace TarnClient {

QString ShownTime(const QDateTime& time, const QString& clock_format, const QDate& today) {
  const QLocale locale;
  const QString clock = locale.toString(time.time(), clock_format);
  if (time.date() == today) {
    return clock;
  }
  return QStringLiteral("%1 %2").arg(locale.toString(time.date(), QLocale::ShortFormat), clock);
}

}  // namespace TarnClient
