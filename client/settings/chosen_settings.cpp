#include "settings/chosen_settings.h"

#include <QStringList>

#include "settings/json_reader.h"

namespace TarnClient {

namespace {

// In the order of OpensFirst.
const QStringList& NamesOfOpensFirst() {
  static const QStringList names{QStringLiteral("default_view"), QStringLiteral("last_played"),
                                 QStringLiteral("nothing")};
  return names;
}

}  // namespace

QJsonObject ChosenSettings::ToJson() const {
  return QJsonObject{{QStringLiteral("language"), language},
                     {QStringLiteral("skin"), skin},
                     {QStringLiteral("seconds_per_plan"), seconds_per_plan},
                     {QStringLiteral("asks_before_closing"), asks_before_closing},
                     {QStringLiteral("snapshot_folder"), snapshot_folder},
                     {QStringLiteral("opens_first"), NamesOfOpensFirst().at(static_cast<int>(opens_first))}};
}

ChosenSettings ChosenSettings::WithChange(const ChosenSettings& before, const ChosenSettings& after) const {
  ChosenSettings changed = *this;
  const auto take = [&](auto field) {
    if (before.*field != after.*field) {
      changed.*field = after.*field;
    }
  };
  take(&ChosenSettings::language);
  take(&ChosenSettings::skin);
  take(&ChosenSettings::seconds_per_plan);
  take(&ChosenSettings::asks_before_closing);
  take(&ChosenSettings::opens_first);
  take(&ChosenSettings::snapshot_folder);
  return changed;
}

ChosenSettings ChosenSettings::FromJson(const QJsonObject& json, bool* sound) {
  const CJsonReader reader(json, sound);
  ChosenSettings chosen;
  chosen.language = reader.Text("language").value_or(chosen.language);
  chosen.skin = reader.Text("skin").value_or(chosen.skin);
  chosen.snapshot_folder = reader.Text("snapshot_folder").value_or(QString());
  chosen.seconds_per_plan =
      reader.Number("seconds_per_plan", kLeastSecondsPerPlan, kMostSecondsPerPlan).value_or(chosen.seconds_per_plan);
  chosen.asks_before_closing = reader.Flag("asks_before_closing").value_or(chosen.asks_before_closing);
  if (const auto name = reader.Text("opens_first")) {
    const int found = NamesOfOpensFirst().indexOf(*name);
    if (found < 0) {
      reader.Reject();
    }
    chosen.opens_first = static_cast<OpensFirst>(qMax(0, found));
  }
  return chosen;
}

}  // namespace TarnClient
