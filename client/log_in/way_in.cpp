#include "log_in/way_in.h"

namespace TarnClient {

// No one is taken unasked where passwords tell who is who.
WayIn WayOf(const StartSituation& start) {
  if (start.is_forced) {
    return WayIn::Ask;
  }
  const bool needs_password = start.has_password && !start.is_password_given;
  const bool needs_name = !start.is_user_named && start.is_store_asking;
  if (!needs_password && !needs_name) {
    return WayIn::Straight;
  }
  if (start.is_unattended) {
    return WayIn::Refuse;
  }
  return WayIn::Ask;
}

}  // namespace TarnClient
