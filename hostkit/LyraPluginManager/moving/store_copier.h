#pragma once

#include "store/sql_engine.h"

namespace TarnHost::Moving {

/// Copies all rows of one state of a store into the tables of another of the same layout, whose own rows go, whatever
/// the engines. Tables and columns that only `from` has, for its engine's own ends, stay behind. Throws CStoreError.
/// Thread: the engines'.
void CopyRows(Store::CSqlEngine& from, Store::CSqlEngine& to);

}  // namespace TarnHost::Moving
