#pragma once

#include <QCoreApplication>

#include "plans/programme.h"

namespace TarnClient {

/// What the programme has to say, in the user's language.
class CProgrammeTexts {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CProgrammeTexts)

 public:
  static QString Of(const Commands::SayFailure& failure);
  /// Where the cycle is: "Group Gates, plan 2 of 5"; empty before its first plan, and when none runs.
  static QString ProgressOf(const CProgramme::State& state);
};

}  // namespace TarnClient
