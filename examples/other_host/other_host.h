#pragma once

#include <QString>

#include "host_export.h"

/// What the program calls, besides the plug-in and the declarations of the host's libraries. Thread: GUI.
namespace OtherHost {

/// Opens the site in a directory: site.json and a file CODE.json for each plan and group. Made when it is not there.
/// False when site.json is there and cannot be read: with another one codes would be given out twice.
TARN_HOST_EXPORT bool Open(const QString& directory);
/// From here on every call of the services returns false.
TARN_HOST_EXPORT void Close();

}  // namespace OtherHost
