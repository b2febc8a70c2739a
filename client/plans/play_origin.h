#pragma once

namespace TarnClient {

/// Why a plan plays.
enum class PlayOrigin { User, History, Automatic, GroupCycle };

}  // namespace TarnClient
