#pragma once

#include <QDateTime>
#include <functional>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// The clock by which automatic plans start and stop: the system's local time, unless a source is set.
/// Thread: GUI.
class TARNPLANVIEW_EXPORT CPlanClock {
 public:
  /// Local time by the clock in use.
  static QDateTime Now();
  /// Sets where the time comes from; an empty function restores the system's clock. For tests, and for clients whose
  /// site has a clock of its own.
  static void SetSource(std::function<QDateTime()> source);
};

}  // namespace TarnPlanView
