#pragma once

#include <functional>

#include "moving/import_planner.h"
#include "store/sql_engine.h"

namespace TarnHost::Moving {

/// What of a site did not get into its file whole.
struct ExportReport {
  QStringList left_out;  // a line each
  int groups = 0, plans = 0, cameras = 0, users = 0;
};

/// Writes one state of a store into the new file `path`, readable by its owner alone. Throws CStoreError; then there is
/// no file. Thread: the engine's.
ExportReport ExportSite(Store::CSqlEngine& engine, const QString& path);

/// Brings what read() answers, once or more, into a store in one transaction; with `dry_run` it is only worked out.
/// Throws CStoreError; then nothing is changed. Thread: the engine's.
ImportPlan ImportSite(Store::CSqlEngine& engine, const std::function<SiteFile()>& read, bool dry_run);

}  // namespace TarnHost::Moving
