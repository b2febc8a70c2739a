#pragma once

#include <QList>

#include "MarUIControl/key_guide.h"

namespace TarnPlanView {

/// The keys of the search field and of its hits.
QList<MarUIControl::KeyEntry> SearchKeys();

}  // namespace TarnPlanView
