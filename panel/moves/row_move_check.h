#pragma once

#include <QPoint>
#include <QRect>

#include "item_level.h"

namespace TarnPlanView {

class CPlanViewTree;

/// A plan that takes part in moves.
inline bool IsPlanLevel(EItemLevel level) {
  return level == PublicPlanLevel || level == OwnPlanLevel;
}

/// Why a row of the tree can't be moved from where a drag began to where it ended.
enum class RowMoveRefusal { None, SameGroup, OtherGroup };

/// Looks at the two rows alone and changes nothing. A drop on the exact middle of the target counts as before it.
/// Points and rectangle in the tree's viewport. Thread: GUI.
RowMoveRefusal CheckRowMove(const CPlanViewTree& tree, const QPoint& start, const QPoint& end,
                            const QRect& target_rect);

}  // namespace TarnPlanView
