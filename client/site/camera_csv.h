#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <optional>
#include <vector>

#include "site/csv_text.h"
#include "site/site_table.h"

namespace TarnClient {

/// What an import would do, and what of the file it leaves out.
struct CameraImport {
  TarnHost::CameraChanges changes;
  int added = 0, changed = 0, same = 0, new_regions = 0;
  QStringList left_out;  // a line each, with the file's line and the reason

  bool ChangesAnything() const { return added + changed > 0; }
};

/// The site's cameras as a table: columns code, name, region ("House/Hall"), main, sub, user, password and device. Who
/// imports a table needs "name" and "main" only; what a table has no column for stays as it is. Thread: any.
class CCameraCsv {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CCameraCsv)
 public:
  /// All cameras, a row each, the names of the columns first. Passwords are a column only when they are asked for;
  /// without them no address is written in which one may stand, and `withheld` counts those.
  static std::vector<QStringList> Rows(const SiteTable& site, bool with_passwords, int* withheld);

  /// A row is about the camera of its code, if name or region fit, else about that of its name in its region, else a
  /// new one. An empty cell empties what it stands for, but for a password: that stays. None with the reason in `why`
  /// for a table that lacks a column.
  static std::optional<CameraImport> Plan(const CCsvText& table, const SiteTable& site, QString* why);
};

}  // namespace TarnClient
