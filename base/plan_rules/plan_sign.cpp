#include "plan_rules/plan_sign.h"

#include <QCoreApplication>
#include <QStringList>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_rules/time_span.h"

namespace view_plugin_protocol {

namespace {

class Texts {
  Q_DECLARE_TR_FUNCTIONS(PlanRules)
};

// Seconds only where they say something.
QString ShortTime(const std::string& time) {
  const QString text = QString::fromStdString(time);
  if (text.size() == 8 && text.endsWith(QLatin1String(":00"))) {
    return text.left(5);
  }
  return text;
}

QString TimedText(const PlanSign& sign) {
  if (sign.begin.isEmpty() || sign.end.isEmpty()) {
    return Texts::tr("automatic");
  }
  const QString times = Texts::tr("automatic %1-%2").arg(sign.begin, sign.end);
  if (HasSpan(sign.begin, sign.end)) {
    return times;
  }
  if (sign.begin == sign.end) {
    return Texts::tr("%1: never starts").arg(times);
  }
  return Texts::tr("%1, over midnight: never starts").arg(times);
}

}  // namespace

PlanSign SignOf(const PlanBasicInfo& plan, bool timed_play) {
  PlanSign sign;
  sign.timed = timed_play && plan.auto_run;
  sign.pages = plan.page_count;
  return sign;
}

PlanSign SignOf(const GetPlanDetailResponse& plan, bool timed_play) {
  PlanSign sign;
  sign.timed = timed_play && plan.auto_run;
  sign.pages = static_cast<int>(plan.pages.size());
  sign.begin = ShortTime(plan.start_time);
  sign.end = ShortTime(plan.end_time);
  return sign;
}

QString TextOf(const PlanSign& sign) {
  QStringList parts;
  if (sign.timed) {
    parts << TimedText(sign);
  }
  if (sign.IsTour()) {
    parts << Texts::tr("tour, %n page(s)", nullptr, sign.pages);
  }
  return parts.join(QStringLiteral(", "));
}

}  // namespace view_plugin_protocol
