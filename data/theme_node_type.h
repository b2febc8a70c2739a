#pragma once

#include <cstdint>

namespace TarnPlanView {

/// Which of the three parallel families of plan trees a model shows.
enum ThemeNodeType : int32_t {
  PublicTheme = 0,    ///< One tree for all users; changing it takes rights.
  OwnTheme = 1,       ///< The user's own.
  ReceivedTheme = 2,  ///< Received in common with others.
};

}  // namespace TarnPlanView
