#pragma once

#include "moving/import_plan.h"
#include "moving/site_file_reader.h"

namespace TarnHost::Moving {

/// Decides what of a file becomes of a store. In a store of the file's own site the same codes are the same things as
/// long as name or place fits: they become as the file has them. In another site nothing that stands is changed: what
/// has the same name in the same place is taken to be the same (cameras also by the address of their main stream), and
/// the rest comes with new codes. Throws CStoreError when codes run out. Pure. Thread: any.
ImportPlan PlanImport(SiteFile file, const StandingSite& here);

}  // namespace TarnHost::Moving
