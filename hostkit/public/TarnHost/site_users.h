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
  int32_t id = 0;  // 0 for one that is still to be made
  QString name;
  std::set<int> rights;     // of 5, 6, 7, and 8 to configure the site
  QStringList user_groups;  // names, in their order
  bool has_password = false;
  bool lacks_role = false;  // users have roles at the server, and this one has none there

  friend bool operator==(const SiteUser& left, const SiteUser& right) {
    return left.id == right.id && left.name == right.name && left.rights == right.rights &&
           left.user_groups == right.user_groups;
  }
};

struct SiteUserGroup {
  int32_t id = 0;
  QString name;

  friend bool operator==(const SiteUserGroup& left, const SiteUserGroup& right) {
    return left.id == right.id && left.name == right.name;
  }
};

/// A group of public plans, and the user groups that alone see it; none: all users do.
struct SiteLimit {
  int32_t group = 0;
  QString path;  // "Perimeter/Gates"
  QStringList user_groups;
};

struct SiteUsers {
  std::vector<SiteUser> users;             // by name
  std::vector<SiteUserGroup> user_groups;  // by name
  std::vector<SiteLimit> groups;           // all public ones, by path
};

/// Changes that are made all or not at all. Each names the record that it rests on: when that is another by now,
/// nothing is changed, so that of two who change the same one the second learns of it.
struct SiteUserChanges {
  template <class Record>
  struct Edit {
    std::optional<Record> before;  // none: it is made
    std::optional<Record> after;   // none: it is removed
  };
  struct User : Edit<SiteUser> {
    std::optional<CSecret> password;  // another one; an empty one takes it away
  };
  struct UserGroup : Edit<SiteUserGroup> {};
  struct Limit {
    SiteLimit before, after;
  };

  // In this order; names may be those of what the call itself makes.
  std::vector<UserGroup> user_groups;
  std::vector<User> users;
  std::vector<Limit> limits;
};

}  // namespace TarnHost
