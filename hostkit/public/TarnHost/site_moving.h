#pragma once

#include <QString>
#include <QStringList>

#include "host_export.h"

namespace TarnHost {

/// A site's users, user groups, regions, cameras, groups and plans in a file, without passwords; its schema is
/// published with the documents. As with StoreCare no client has to be started; on a server it takes the account that
/// owns the tables. False with a line in `error` when it cannot be done; then nothing is changed. Thread: any.
struct TARN_HOST_EXPORT SiteMoving {
  /// What came of it, with a line for each thing that is worth one. `is_whole` when nothing was left out.
  struct Moved {
    QStringList lines;
    QString summary;
    bool is_whole = true;
  };

  /// Writes one state of the store into the new file `file`, which must not exist.
  static bool Export(const QString& url, const QString& file, Moved* moved, QString* error);
  /// Brings such a file into a store: all that can be taken, in one transaction; with `dry_run` it is only said what
  /// would be. The clients follow.
  static bool Import(const QString& url, const QString& file, bool dry_run, Moved* moved, QString* error);
};

}  // namespace TarnHost
