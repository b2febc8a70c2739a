#pragma once

#include <QString>
#include <string>
#include <vector>

#include "site/site_table.h"

namespace TarnClient {

/// One line of the site's tree.
struct SiteRow {
  bool is_region = false;
  std::string code;
  QString name, main, sub, user;
  int parent = -1;  // place in SiteRows::rows; -1: at the top
  int row = 0;      // among its parent's
  std::vector<int> children;
};

/// The site's tree as it is shown: regions first, each kind in the order of the names.
struct SiteRows {
  std::vector<SiteRow> rows;
  std::vector<int> top;
  int regions = 0, cameras = 0;  // of the whole site

  /// What holds `filter` in name, address, user or code, and the regions above; of a region that holds it in its name
  /// everything. What names a region that is not there stands at the top. Thread: any.
  static SiteRows Of(const SiteTable& site, const QString& filter);
};

}  // namespace TarnClient
