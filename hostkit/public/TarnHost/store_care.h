#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "TarnHost/site_users.h"
#include "host_export.h"

namespace TarnHost {

/// What can be done with a plan store that no client has to be started for, also while clients use it. `url` is a
/// store's address as in PlanStoreOptions. False with a line in `error` when it cannot be done; then nothing is
/// changed. A call waits for the store: as long as its statements take, 10 s for each of a server's at the most.
/// Thread: any, without an application object as well as with one.
struct TARN_HOST_EXPORT StoreCare {
  /// Goes through the whole store; `findings` gets a line for each thing that cannot be right, `summary` one for all.
  static bool Check(const QString& url, QStringList* findings, QString* summary, QString* error);

  /// Writes one state of a store, with what still stands in its log, into the new file `copy`, which must not exist and
  /// becomes a store in a file, also of one on a server.
  static bool BackUp(const QString& url, const QString& copy, QString* error);

  /// From now on each user of a store on a server has a role there, under which a desk sees and changes with any
  /// program no more than the user may; `said` names the roles that were made. Takes the account that owns the tables.
  static bool UseRoles(const QString& url, QString* said, QString* error);

  /// Limits a group of public plans, named by its code or its path ("Perimeter/Gates"), to these user groups; none
  /// opens it to all users, no list leaves it as it is. `said` gets the line that says what it is now. The clients
  /// follow.
  static bool LimitGroup(const QString& url, const QString& group, const std::optional<QStringList>& user_groups,
                         QString* said, QString* error);
  /// Puts these users, and no others, into a user group, which is made if need be; likewise.
  static bool FillUserGroup(const QString& url, const QString& user_group, const std::optional<QStringList>& users,
                            QString* said, QString* error);

  /// Who may log in, and what each may do.
  static bool ReadUsers(const QString& url, SiteUsers* users, QString* error);
  /// Changes that, by the rules of SiteUserChanges. The clients follow.
  static bool ChangeUsers(const QString& url, const SiteUserChanges& changes, QString* error);
};

}  // namespace TarnHost
