#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "host_export.h"

namespace TarnHost {

/// What can be done with a plan store that no client has to be started for, also while clients use it. False with a
/// line in `error` when it cannot be done; then nothing is changed. Thread: any, without an application object as well
/// as with one.
struct TARN_HOST_EXPORT StoreCare {
  /// Goes through the whole store; `findings` gets a line for each thing that cannot be right, `summary` one for all.
  static bool Check(const QString& url, QStringList* findings, QString* summary, QString* error);

  /// Writes one state of a store in a file, with what still stands in its log, into the new file `copy`, which must not
  /// exist.
  static bool BackUp(const QString& url, const QString& copy, QString* error);

  /// Limits a group of public plans, named by its code or its path ("Perimeter/Gates"), to these user groups; none
  /// opens it to all users, no list leaves it as it is. `said` gets the line that says what it is now. The clients
  /// follow.
  static bool LimitGroup(const QString& url, const QString& group, const std::optional<QStringList>& user_groups,
                         QString* said, QString* error);
  /// Puts these users, and no others, into a user group, which is made if need be; likewise.
  static bool FillUserGroup(const QString& url, const QString& user_group, const std::optional<QStringList>& users,
                            QString* said, QString* error);
};

}  // namespace TarnHost
