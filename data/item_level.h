#pragma once

namespace TarnPlanView {

/// Level of a row as the plan tree's moves see it. Family 2 takes no part in moves and has level 0.
enum EItemLevel {
  NoLevel = 0,
  PublicGroupLevel = 1,  // root and groups of family 0
  PublicPlanLevel = 2,
  OwnPlanLevel = 4,
  OwnGroupLevel = 5,  // root and groups of family 1
};

}  // namespace TarnPlanView
