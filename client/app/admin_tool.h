#pragma once

#include "app/client_options.h"

namespace TarnClient {

/// Shows or changes users, user groups and limits of groups, as `--admin` says; answers the exit code.
int RunAdminTool(const ClientOptions& options);

}  // namespace TarnClient
