#pragma once

#include <QString>
#include <optional>

#include "TarnHost/secret.h"

namespace TarnClient {

/// The password that comes with the command line, on no line that others read: the first line of the file descriptor,
/// else the variable TARN_PASSWORD, which is wiped in any case. None when there is neither. A descriptor that cannot be
/// read puts a line into `error`. Before there are threads.
std::optional<TarnHost::CSecret> TakeGivenPassword(std::optional<int> descriptor, QString* error);

}  // namespace TarnClient
