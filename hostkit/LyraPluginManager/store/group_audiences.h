#pragma once

#include <set>
#include <unordered_map>

#include "plan_rules/audience.h"

namespace TarnHost::Store {

using view_plugin_protocol::Audience;
using view_plugin_protocol::IsVisibleTo;
using view_plugin_protocol::Viewer;

/// Which groups are limited to whom, of all groups and users.
struct GroupAudiences {
  std::unordered_map<int32_t, Audience> limited;  // by the group's code; none for what all users see
  std::unordered_map<int32_t, Viewer> viewers;    // by user; none for one in no user group without a right to configure

  /// Whether the group, by itself, is open to the user.
  bool Admits(int32_t group, int32_t user) const {
    const auto audience = limited.find(group);
    if (audience == limited.end()) {
      return true;
    }
    const auto viewer = viewers.find(user);
    return IsAdmitted(viewer == viewers.end() ? Viewer() : viewer->second, audience->second);
  }

  /// The groups that are not.
  std::set<int32_t> ClosedTo(int32_t user) const {
    std::set<int32_t> closed;
    for (const auto& [group, audience] : limited) {
      if (!Admits(group, user)) {
        closed.insert(group);
      }
    }
    return closed;
  }
};

}  // namespace TarnHost::Store
