#pragma once

#include <QJsonObject>
#include <QString>

namespace TarnClient {

/// What the client shows when it starts and the command line names no plan.
enum class OpensFirst { DefaultView, LastPlayed, Nothing };

/// What a user has chosen in the settings. A plain value.
struct ChosenSettings {
  static constexpr int kLeastSecondsPerPlan = 5;
  static constexpr int kMostSecondsPerPlan = 3600;

  QString language;  // of a catalogue; empty: the system's
  QString skin = QStringLiteral("redblack");
  int seconds_per_plan = 20;        // a plan's turn in a group cycle
  bool asks_before_closing = true;  // while something plays
  OpensFirst opens_first = OpensFirst::DefaultView;
  QString snapshot_folder;  // empty: one in the user's pictures

  QJsonObject ToJson() const;
  /// Values that are not there or cannot be are those of a first start; `sound` becomes false for the latter.
  static ChosenSettings FromJson(const QJsonObject& json, bool* sound);

  /// These, with whatever differs between the other two as it is in `after`.
  ChosenSettings WithChange(const ChosenSettings& before, const ChosenSettings& after) const;

  bool operator==(const ChosenSettings& other) const { return ToJson() == other.ToJson(); }
  bool operator!=(const ChosenSettings& other) const { return !(*this == other); }
};

}  // namespace TarnClient
