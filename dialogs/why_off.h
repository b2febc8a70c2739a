#pragma once

#include <QString>
#include <QWidget>

namespace TarnPlanView {

/// Off for this reason, on for an empty one. The reason stands below the first line of the tool tip, which stays.
inline void SetWhyOff(QWidget* widget, const QString& reason) {
  QString tip = widget->toolTip().section(QLatin1Char('\n'), 0, 0);
  if (!reason.isEmpty() && !tip.isEmpty()) {
    tip += QLatin1Char('\n');
  }
  widget->setToolTip(tip + reason);
  widget->setEnabled(reason.isEmpty());
}

}  // namespace TarnPlanView
