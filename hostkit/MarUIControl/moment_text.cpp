#include "MarUIControl/moment_text.h"

#include <QLocale>

namespace MarUIControl {

QString MomentText(const QDateTime& moment, const QDateTime& now) {
  QString form = QStringLiteral("yyyy-MM-dd HH:mm");
  if (moment.date() == now.date()) {
    form = QStringLiteral("HH:mm");
  }
  return QLocale().toString(moment, form);
}

}  // namespace MarUIControl
