#pragma once

#include "app/client_options.h"

namespace TarnClient {

/// Does what was asked for instead of showing the client, and says what came of it. Answers the exit code: 0 when all
/// is well, 1 when a check has findings or something was left out, 2 when it could not be done.
int RunStoreTool(const ClientOptions& options);

}  // namespace TarnClient
