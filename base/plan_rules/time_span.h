#pragma once

namespace view_plugin_protocol {

/// Whether a plan that runs by itself between these times of day ever starts: over midnight it does not. In any form
/// that sorts as the times do.
template <class TimeOfDay>
bool HasSpan(const TimeOfDay& begin, const TimeOfDay& end) {
  return begin < end;
}

}  // namespace view_plugin_protocol
