#pragma once

namespace TarnPlanView {

/// Level of a row as the plan tree's moves see it. Family 2 takes no part in moves and has level 0.
enum EItemLevel {
  NoLevel = 0,           ///< Takes no part in moves.
  PublicGroupLevel = 1,  ///< Root and groups of family 0.
  PublicPlanLevel = 2,   ///< Plans of family 0.
  OwnPlanLevel = 4,      ///< Plans of family 1.
  OwnGroupLevel = 5,     ///< Root and groups of family 1.
};

}  // namespace TarnPlanView
