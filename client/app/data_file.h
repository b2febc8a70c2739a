#pragma once

#include <QString>

#include "app/client_options.h"

namespace TarnClient {

/// A file in the user's data folder, which is made. Needs an application object with its name.
QString DataFile(const char* name);

/// The store that was asked for, else the user's own.
QString StoreUrlOf(const ClientOptions& options);

}  // namespace TarnClient
