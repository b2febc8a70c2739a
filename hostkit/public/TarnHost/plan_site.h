#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_export.h"

namespace TarnHost {

/// The content of a whole site, as a new store is filled with it. Groups and plans refer to each other by their place
/// in the vectors; the store gives the codes, in this order: groups, then plans.
struct PlanSite {
  struct User {
    std::string name;
    std::vector<int> rights;  // of 5, 6, 7, and 8 to configure the site
    int default_view = -1;    // place in `plans`
  };
  struct UserGroup {
    std::string name;
    std::vector<int> users;  // places in `users`
  };
  struct Region {
    std::string name;
    int parent = -1;  // place in `regions`
  };
  struct Camera {
    std::string name;
    int region = -1;
    bool online = true;
    std::vector<std::string> presets;
    std::vector<int32_t> stream_types;
  };
  struct Group {
    std::string name;
    int parent = -1;  // place in `groups`; -1 stands directly under the root of its family
    int family = 0;
    int owner = -1;                  // place in `users`, for family 1
    std::vector<int> audience = {};  // places in `user_groups` that alone see it, for family 0; none: all users
  };
  struct Plan {
    std::string name;
    int group = -1;  // place in `groups`; -1 stands directly under the root of its family
    int family = 0;
    int owner = -1;
    std::vector<view_plugin_protocol::PlanPage> pages;  // resource_code holds the camera's place, "#12"
    bool auto_run = false;
    std::string begin_time, end_time, thumbnail, creator;
  };

  std::string root_name = "Plans";
  bool is_pretended = false;  // its cameras do not exist, and may be shown by pictures that are made up
  std::vector<User> users;
  std::vector<UserGroup> user_groups;
  std::vector<Region> regions;
  std::vector<Camera> cameras;
  std::vector<Group> groups;
  std::vector<Plan> plans;
  std::vector<std::pair<std::string, int>> switches;  // name, value; the rest keep their defaults
};

/// A site that is still to be filled: one user, "operator", with all rights.
TARN_HOST_EXPORT PlanSite MakeEmptySite();

/// The demo site: 4 users with different rights, 40 cameras in a region tree, one of them offline, 30 groups and 120
/// plans.
TARN_HOST_EXPORT PlanSite MakeDemoSite();

}  // namespace TarnHost
