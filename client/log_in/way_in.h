#pragma once

namespace TarnClient {

/// How a start gets to its user.
enum class WayIn {
  Straight,  // logs in without a window
  Ask,       // shows the dialog
  Refuse     // would have to ask, but shows no window to a user
};

/// What that depends on. A plain value.
struct StartSituation {
  bool is_forced = false;      // --log-in
  bool is_user_named = false;  // --user
  bool has_password = false;   // that user, or who is taken when none is named
  bool is_password_given = false;
  bool is_store_asking = false;  // some user has a password
  bool is_unattended = false;    // a picture or a measured run
};

WayIn WayOf(const StartSituation& start);

}  // namespace TarnClient
