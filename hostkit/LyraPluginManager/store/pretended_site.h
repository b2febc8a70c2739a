#pragma once

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Marks a store as that of a pretended site that was made as one before there was such a mark: its cameras are those
/// of the demo site, one like the other, and none has an address. Throws CStoreError. Thread: the engine's.
void MarkIfPretended(CSqlEngine& engine);

}  // namespace TarnHost::Store
