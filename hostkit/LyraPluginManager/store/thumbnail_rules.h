#pragma once

#include <QByteArray>
#include <string>

namespace TarnHost::Store {

/// The thumbnail as the store keeps it: within the limits, shrunk where it is larger. A save is not refused for its
/// picture, or a plan that has a large one from an older version could be neither moved nor edited. Empty when there is
/// none, and when a large one is no picture or too large to be decoded. Thread: any but GUI, since it scales.
QByteArray BoundedThumbnail(const std::string& png);

}  // namespace TarnHost::Store
