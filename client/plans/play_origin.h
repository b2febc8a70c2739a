#pragma once

namespace TarnClient {

/// Why a plan plays. GroupCycle: a turn of a cycle that the user has begun. DefaultView: opened at the start, a plan or
/// a turn of a group.
enum class PlayOrigin { User, History, Automatic, GroupCycle, DefaultView };

/// Whether the user has picked this very plan.
inline bool IsPicked(PlayOrigin origin) {
  return origin == PlayOrigin::User || origin == PlayOrigin::History;
}

/// Whether no one has asked for it today, so that a timed plan may take its place.
inline bool StartsByItself(PlayOrigin origin) {
  return origin == PlayOrigin::Automatic || origin == PlayOrigin::DefaultView;
}

}  // namespace TarnClient
