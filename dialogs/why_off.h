#pragma once

#include <QString>
#include <QVariant>
#include <QWidget>

namespace TarnPlanView {

/// Off for this reason, on for an empty one. The reason stands below the widget's own tool tip, which stays.
inline void SetWhyOff(QWidget* widget, const QString& reason) {
  static const char* const kOwnTip = "own_tip";
  static const char* const kTipWithReason = "tip_with_reason";
  // A tip that was set since the last reason is the widget's own.
  if (widget->toolTip() != widget->property(kTipWithReason).toString()) {
    widget->setProperty(kOwnTip, widget->toolTip());
  }
  QString tip = widget->property(kOwnTip).toString();
  if (!reason.isEmpty() && !tip.isEmpty()) {
    tip += QLatin1Char('\n');
  }
  tip += reason;
  widget->setProperty(kTipWithReason, tip);
  widget->setToolTip(tip);
  widget->setEnabled(reason.isEmpty());
}

}  // namespace TarnPlanView
