#include "plans/programme_texts.h"

#include <QLocale>

namespace TarnClient {

using Reason = Commands::SayFailure::Reason;

QString CProgrammeTexts::Of(const Commands::SayFailure& failure) {
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
    case Reason::PlanFailed:
      return detail;
    case Reason::PlansSkipped:
      break;
  }
  if (failure.details.size() == 1) {
    return tr("\"%1\" could not be played and was skipped.").arg(detail);
  }
  return tr("\"%1\" and %2 more could not be played and were skipped.")
      .arg(detail, QString::number(failure.details.size() - 1));
}

QString CProgrammeTexts::Of(const CProgramme::Stopped& stopped) {
  if (stopped.cycle && !stopped.cycle->name.isEmpty()) {
    return tr("Stopped the plans of %1.").arg(stopped.cycle->name);
  }
  return tr("Stopped %1.").arg(stopped.play.name);
}

QString CProgrammeTexts::NamelessOf(const CProgramme::Failed& failed) {
  if (failed.play.code.empty()) {
    return tr("The default view could not be played.");
  }
  if (failed.cycle) {
    return tr("The group could not be played.");
  }
  return tr("The plan could not be played.");
}

QString CProgrammeTexts::Of(const CProgramme::Failed& failed, const QString& name) {
  const bool by_itself = failed.play.by == PlayOrigin::DefaultView && failed.may_pass;
  QString text = tr("\"%1\" could not be played.").arg(name);
  if (name.isEmpty()) {
    text = NamelessOf(failed);
  }
  if (by_itself) {
    text += QLatin1Char(' ') + tr("It is tried again by itself.");
  }
  return text;
}

QString CProgrammeTexts::NoteOf(const CProgramme::State& state) {
  const auto clock = [](const QDateTime& time) { return QLocale().toString(time.time(), QStringLiteral("HH:mm")); };
  const bool is_timed = state.on_wall && state.on_wall->by == PlayOrigin::Automatic;
  if (is_timed && state.timed_end) {
    return tr("automatic until %1").arg(clock(state.timed_end->at));
  }
  if (state.ended) {
    return tr("%1 ended at %2").arg(state.ended->name, clock(state.ended->at));
  }
  return QString();
}

QString CProgrammeTexts::TitleOf(const CProgramme::State& state) {
  if (!state.on_wall) {
    return QString();
  }
  const CProgramme::Cycle cycle = state.cycle.value_or(CProgramme::Cycle());
  if (cycle.name.isEmpty() || cycle.last.plan.index_code != state.on_wall->code) {
    return state.on_wall->name;
  }
  return tr("%1 (%2)").arg(state.on_wall->name, cycle.name);
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
