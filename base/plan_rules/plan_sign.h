#pragma once

#include <QString>
#include <string>

namespace view_plugin_protocol {

struct GetPlanDetailResponse;
struct PlanBasicInfo;

/// What tells a plan from one that just stands there when it is played: it starts by itself, or turns pages.
struct PlanSign {
  bool timed = false;
  int pages = 1;
  QString begin, end;  // of the daily run, "19:00"; empty where they are not known

  bool IsTour() const { return pages > 1; }
  bool IsEmpty() const { return !timed && !IsTour(); }
};

/// `timed_play`: whether the site lets plans start by themselves; no plan is timed otherwise.
PlanSign SignOf(const PlanBasicInfo& plan, bool timed_play);
PlanSign SignOf(const GetPlanDetailResponse& plan, bool timed_play);

/// "automatic 19:00-21:05, tour, 3 pages" as far as it applies; empty for no sign. For the user.
QString TextOf(const PlanSign& sign);

}  // namespace view_plugin_protocol
