#pragma once

#include <QCoreApplication>

#include "plans/programme.h"

namespace TarnClient {

/// What the programme has to say, in the user's language.
class CProgrammeTexts {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CProgrammeTexts)

 public:
  static QString Of(const Commands::SayFailure& failure);
  /// "Stopped Gate overview."
  static QString Of(const CProgramme::Stopped& stopped);
  /// `name`: of the plan or group; empty when it is not known.
  static QString Of(const CProgramme::Failed& failed, const QString& name);
  /// Until when a timed plan plays, or which one has ended and when; empty when there is nothing to say.
  static QString NoteOf(const CProgramme::State& state);
  /// What plays, in a cycle with its group; empty for nothing.
  static QString TitleOf(const CProgramme::State& state);
  /// Where the cycle is: "Group Gates, plan 2 of 5"; empty before its first plan, and when none runs.
  static QString ProgressOf(const CProgramme::State& state);

 private:
  static QString NamelessOf(const CProgramme::Failed& failed);
};

}  // namespace TarnClient
