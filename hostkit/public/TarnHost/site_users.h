#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "TarnHost/secret.h"

namespace TarnHost {

/// Who may log in at a site, and what each may do. Plain values.
struct SiteUser {
  int32_t id = 0;  ///< 0 for one that is still to be made. None is given a second time.
  /// By the rule for names, see view_plugin_protocol::PlanGroup, and without "," and "="; no other user's. Blanks at
  /// its ends are cut off.
  QString name;
  std::set<int> rights;     ///< Of 5 add, 6 edit, 7 delete, and 8 to configure the site.
  QStringList user_groups;  ///< Names of those that the user is in; as read in their order, in changes in any.
  /// The store keeps a password of this user. Not looked at in changes. Says nothing of a role's at the server.
  bool has_password = false;
  /// Users have roles at the server, and this one has none there. Not looked at in changes.
  bool lacks_role = false;

  /// By all that a change can name.
  friend bool operator==(const SiteUser& left, const SiteUser& right) {
    return left.id == right.id && left.name == right.name && left.rights == right.rights &&
           left.user_groups == right.user_groups;
  }
};

/// Users to whom groups of public plans can be limited. A plain value.
struct SiteUserGroup {
  int32_t id = 0;  ///< 0 for one that is still to be made.
  QString name;    ///< As a user's; no other user group's.

  /// By both.
  friend bool operator==(const SiteUserGroup& left, const SiteUserGroup& right) {
    return left.id == right.id && left.name == right.name;
  }
};

/// A group of public plans, and the user groups that it is limited to; none: all users see it. Beside those in the user
/// groups who may configure the site sees it; what is below it is seen by no one else, either.
struct SiteLimit {
  int32_t group = 0;        ///< Code of the group.
  QString path;             ///< Names from the top down: "Perimeter/Gates". Not looked at in changes.
  QStringList user_groups;  ///< Names; as read in their order, in changes in any.
};

/// All that is known of who may do what at a site.
struct SiteUsers {
  std::vector<SiteUser> users;             ///< By name.
  std::vector<SiteUserGroup> user_groups;  ///< By name.
  std::vector<SiteLimit> groups;           ///< All public ones, by path.
};

/// Changes that are made all or not at all. Each names the record that it rests on: when that is another by now,
/// nothing is changed, so that of two who change the same one the second learns of it. The last user who has the right
/// to configure the site keeps it, and who makes the changes is not removed by them.
struct SiteUserChanges {
  /// One record, as it was read and as it is to be. One of the two at the least.
  template <class Record>
  struct Edit {
    std::optional<Record> before;  ///< As it was read; none: it is made.
    std::optional<Record> after;   ///< As it is to be, under the number of `before`; none: it is removed.
  };
  /// A user. With one who is removed go the user's own plans and groups. Where users have roles at a server, these
  /// follow as far as the account may make roles.
  struct User : Edit<SiteUser> {
    std::optional<CSecret> password;  ///< Another one, an empty one to take it away; not set: it stays.
  };
  /// A user group. One that still limits a group is not removed.
  struct UserGroup : Edit<SiteUserGroup> {};
  /// Who sees a group.
  struct Limit {
    SiteLimit before;  ///< As it was read: group and user groups count.
    SiteLimit after;   ///< What its user groups are to be; none opens it to all.
  };

  // In this order; names may be those of what the call itself makes.
  std::vector<UserGroup> user_groups;  ///< Changed first.
  std::vector<User> users;             ///< Then these: they may be in user groups that the same changes make.
  std::vector<Limit> limits;           ///< At the last: may name such user groups, too.
};

}  // namespace TarnHost
