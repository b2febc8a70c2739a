#pragma once

namespace TarnClient {

/// Why a plan plays. GroupCycle: a turn of a cycle that the user has begun. DefaultView: opened at the start, a plan or
/// a turn of a group.
enum class PlayOrigin { User, History, Automatic, GroupCycle, DefaultView };

}  // namespace TarnClient
