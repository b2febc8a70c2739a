#pragma once

#include <QString>
#include <QStringList>

#include "host_export.h"

namespace TarnHost {

/// What can be done with a plan store that no client has to be started for. Both leave the store as it is and may run
/// while clients use it. Thread: any, without an application object as well as with one.
struct TARN_HOST_EXPORT StoreCare {
  /// Goes through the whole store; `findings` gets a line for each thing that cannot be right, `summary` one for all.
  /// False with a line in `error` when the store cannot be opened or read.
  static bool Check(const QString& url, QStringList* findings, QString* summary, QString* error);

  /// Writes one state of a store in a file, with what still stands in its log, into the new file `copy`. False with a
  /// line in `error`, and no copy, when that is not possible, or `copy` exists.
  static bool BackUp(const QString& url, const QString& copy, QString* error);
};

}  // namespace TarnHost
