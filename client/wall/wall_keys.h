#pragma once

#include <QList>

#include "MarUIControl/key_guide.h"

namespace TarnClient {

/// The keys of the live view while it has the focus.
QList<MarUIControl::KeyEntry> WallKeys();

}  // namespace TarnClient
