#include "plan_clock.h"

#include <utility>

namespace TarnPlanView {

namespace {
std::function<QDateTime()>& Source() {
  static std::function<QDateTime()> source;
  return source;
}
}  // namespace

QDateTime CPlanClock::Now() {
  if (Source()) {
    return Source()();
  }
  return QDateTime::currentDateTime();
}

void CPlanClock::SetSource(std::function<QDateTime()> source) {
  Source() = std::move(source);
}

}  // namespace TarnPlanView
