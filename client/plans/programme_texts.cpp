#include "plans/programme_texts.h"

namespace TarnClient {

QString CProgrammeTexts::Of(const Commands::SayFailure& failure) {
  using Reason = Commands::SayFailure::Reason;
  const QString detail = failure.details.value(0);
  switch (failure.reason) {
    case Reason::GroupsSwitchedOff:
      return tr("Playing the plans of a group in turn is switched off.");
    case Reason::DefaultGroupSwitchedOff:
      return tr("The default view is a group, but playing groups in turn is switched off.");
    case Reason::NoPlans:
      return tr("The group has no plans to cycle through.");
    case Reason::GroupFailed:
      return detail;
    case Reason::TurnFailed:
      return tr("The next plan of the group could not be played and is tried again: %1").arg(detail);
    case Reason::PlansSkipped:
      break;
  }
  if (failure.details.size() == 1) {
    return tr("\"%1\" could not be played and was skipped.").arg(detail);
  }
  return tr("\"%1\" and %2 more could not be played and were skipped.")
      .arg(detail, QString::number(failure.details.size() - 1));
}

QString CProgrammeTexts::ProgressOf(const CProgramme::State& state) {
  if (!state.cycle || state.cycle->last.position < 0) {
    return QString();
  }
  const CProgramme::Cycle& cycle = *state.cycle;
  const QString place = tr("plan %1 of %2").arg(cycle.last.position + 1).arg(cycle.last.plans.size());
  if (cycle.name.isEmpty()) {
    return tr("Group \u00b7 %1").arg(place);
  }
  return tr("Group %1 \u00b7 %2").arg(cycle.name, place);
}

}  // namespace TarnClient
