#pragma once

#include <QList>

#include "MarUIControl/key_guide.h"

namespace TarnPlanView {

/// The keys of the plan editor: of its own, of its pages, windows and cameras.
QList<MarUIControl::KeyEntry> EditorKeys();

}  // namespace TarnPlanView
