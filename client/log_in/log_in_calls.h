#pragma once

#include <functional>

#include "TarnHost/log_in.h"

namespace TarnClient {

/// How the store is asked who may work here. Called from any thread; the first two may take long.
struct LogInCalls {
  std::function<TarnHost::LogInAnswer(const TarnHost::LogInRequest&, const TarnHost::LogInSteps&)> log_in;
  std::function<TarnHost::LogInAnswer(const TarnHost::LogInRequest&)> check_password;  // without a log-in
  std::function<bool(const QString& user)> has_password;
};

}  // namespace TarnClient
