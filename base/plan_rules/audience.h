#pragma once

#include <algorithm>
#include <cstdint>
#include <set>

#include "plan_rules/families.h"

// Who sees what of the plan tree. Thread: any.
namespace view_plugin_protocol {

/// The user groups that a group of public plans is limited to; none for a group that all users see.
using Audience = std::set<int32_t>;

/// What decides, of a user, which limited groups he sees.
struct Viewer {
  bool configures = false;             // has the right to configure the site
  std::set<int32_t> user_groups = {};  // that he is in
};

/// Whether a limited group, itself and what is below it, is open to a user.
inline bool IsAdmitted(const Viewer& viewer, const Audience& audience) {
  const auto is_in = [&viewer](int32_t group) { return viewer.user_groups.count(group) != 0; };
  return audience.empty() || viewer.configures || std::any_of(audience.begin(), audience.end(), is_in);
}

/// Whether a user sees a row of the service: a group, a plan, or whatever else has a family and an owner. Only for a
/// public row `is_admitted()` is asked: whether its own group, if it is one, and all groups above are open to the user.
template <class Row, class Admitted>
bool IsVisibleTo(const Row& row, int32_t user, const Admitted& is_admitted) {
  if (row.family == OwnFamily) {
    return row.owner == user;
  }
  return row.family != PublicFamily || is_admitted();
}

}  // namespace view_plugin_protocol
