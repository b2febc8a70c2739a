#pragma once

#include <cstdint>

namespace TarnPlanView {

/// Which of the three parallel families of plan trees a model shows.
enum ThemeNodeType : int32_t {
  PublicTheme = 0,
  OwnTheme = 1,
  ReceivedTheme = 2,
};

}  // namespace TarnPlanView
