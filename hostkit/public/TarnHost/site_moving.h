#pragma once

#include <QString>
#include <QStringList>

#include "host_export.h"

namespace TarnHost {

/// A site's users, user groups, regions, cameras, groups and plans in a file, without passwords; its schema is
/// published with the documents. `url` is a store's address as in PlanStoreOptions. As with StoreCare no client has to
/// be started; on a server it takes the account that owns the tables. False with a line in `error` when it cannot be
/// done; then nothing is changed. Thread: any.
struct TARN_HOST_EXPORT SiteMoving {
  /// What came of it, in English: for who looks after a site, not for its users.
  struct Moved {
    QStringList lines;  ///< One for each thing worth it: "Taken: ...", "Changed: ...", "Left out: ...", "Remark: ...".
    QString summary;    ///< One line for all.
    bool is_whole = true;  ///< Nothing was left out.
  };

  /// Writes one state of the store into the new file `file`, which must not exist; it is its owner's alone.
  static bool Export(const QString& url, const QString& file, Moved* moved, QString* error);
  /// Brings such a file into a store: all that can be taken, in one transaction; with `dry_run` it is only said what
  /// would be. The clients follow.
  static bool Import(const QString& url, const QString& file, bool dry_run, Moved* moved, QString* error);
};

}  // namespace TarnHost
