#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_export.h"

namespace TarnHost {

/// The content of a whole site, as a new store is filled with it. Records refer to each other by their place in the
/// vectors, from 0; a user, user group, group or plan that is not there keeps the store from being made. The store
/// gives the codes, groups before plans. It is filled as it stands: names, times and rights are not checked. Texts are
/// UTF-8.
struct PlanSite {
  /// Who may log in. All are made without a password.
  struct User {
    std::string name;         ///< By which the user logs in, no other's; a server's role is called so, too.
    std::vector<int> rights;  ///< Of 5 add, 6 edit, 7 delete, and 8 to configure the site.
    int default_view = -1;    ///< Place in `plans` of what the client opens at the start; -1: nothing.
  };
  /// Users to whom groups of plans can be limited.
  struct UserGroup {
    std::string name;        ///< Its name; two of the same name become one, with the members of the later one.
    std::vector<int> users;  ///< Places in `users`.
  };
  /// A region of the site's cameras.
  struct Region {
    std::string name;  ///< Its name.
    int parent = -1;   ///< Place in `regions`; -1: at the top.
  };
  /// A camera. How its pictures are reached is not part of it.
  struct Camera {
    std::string name;                   ///< Its name.
    int region = -1;                    ///< Place in `regions`; -1: in none, at the top.
    bool online = true;                 ///< Whether it can be reached, as trees show it.
    std::vector<std::string> presets;   ///< Names of its positions, numbered from 1.
    std::vector<int32_t> stream_types;  ///< 0 main, 1 sub, 2 smooth; each once.
  };
  /// A group of plans. What stands in another group has that one's family and owner.
  struct Group {
    std::string name;                ///< Its name.
    int parent = -1;                 ///< Place in `groups`, an earlier one; -1 stands directly under the root.
    int family = 0;                  ///< 0 public, 1 a user's own, 2 received in common.
    int owner = -1;                  ///< Place in `users`, for family 1.
    std::vector<int> audience = {};  ///< Places in `user_groups` that alone see it, for family 0; none: all users.
  };
  /// A plan. In a group it has the group's family and owner.
  struct Plan {
    std::string name;  ///< Its name.
    int group = -1;    ///< Place in `groups`; -1 stands directly under the root of its family.
    int family = 0;    ///< As of a group.
    int owner = -1;    ///< As of a group. Of any family: who made it, where `creator` says nothing.
    std::vector<view_plugin_protocol::PlanPage> pages;  ///< A resource_code holds the camera's place, "#12".
    bool auto_run = false;                              ///< It starts and ends by itself each day.
    std::string begin_time;                             ///< "HH:mm:ss", or empty.
    std::string end_time;                               ///< Likewise.
    std::string thumbnail;                              ///< PNG bytes; empty: none.
    std::string creator;  ///< Name of who made it; empty: the user at `owner`, else the first.
  };

  std::string root_name = "Plans";     ///< Name of the site, which each tree's root shows.
  bool is_pretended = false;           ///< Its cameras do not exist, and may be shown by pictures that are made up.
  std::vector<User> users;             ///< Numbered from 1 in this order.
  std::vector<UserGroup> user_groups;  ///< In any order.
  std::vector<Region> regions;         ///< In any order; coded from 1.
  std::vector<Camera> cameras;         ///< In any order; coded from 1001.
  std::vector<Group> groups;           ///< Parents before what stands in them.
  std::vector<Plan> plans;             ///< In any order.
  /// Names of CPlanStore::SwitchNames() with their values, 0 for off; the rest keep their defaults.
  std::vector<std::pair<std::string, int>> switches;
};

/// A site that is still to be filled: one user, "operator", with all rights. Thread: any.
TARN_HOST_EXPORT PlanSite MakeEmptySite();

/// The demo site: 4 users with different rights, 40 cameras in a region tree, one of them offline, 30 groups and 120
/// plans. Thread: any.
TARN_HOST_EXPORT PlanSite MakeDemoSite();

}  // namespace TarnHost
