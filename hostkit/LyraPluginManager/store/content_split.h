#pragma once

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// A step of the store's layout: pages and thumbnails, which are nearly all of a store's bytes, move out of the rows
/// that make the tree into a table of their own, and each row gets the numbers of its plan's cameras. Inside the
/// caller's transaction. No single statement touches so much that a server would seem to hang.
void SplitContentOff(CSqlEngine& engine);

}  // namespace TarnHost::Store
