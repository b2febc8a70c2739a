#pragma once

#include <QString>

#include "app/client_options.h"

namespace TarnClient {

/// A file in the user's data folder, which is made. Needs an application object with its name.
QString DataFile(const char* name);

/// The folder of copies of stores on servers: as it is named, or the usual one; and the same where any is kept, else
/// empty.
QString NamedCopiesFolder(const ClientOptions& options);
QString CopiesFolderOf(const ClientOptions& options);

/// The store that was asked for, else the user's own.
QString StoreUrlOf(const ClientOptions& options);

}  // namespace TarnClient
