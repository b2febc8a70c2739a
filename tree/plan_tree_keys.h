#pragma once

#include <QList>

#include "MarUIControl/key_guide.h"

namespace TarnPlanView {

/// The keys that the tree of plans takes by itself, besides those of commands.
QList<MarUIControl::KeyEntry> PlanTreeKeys();

}  // namespace TarnPlanView
