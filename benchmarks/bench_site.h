#pragma once

#include "TarnHost/plan_site.h"

/// A public tree of `groups` groups directly below the root with `plans_each` plans in each, and one user with all
/// rights.
TarnHost::PlanSite MakeBenchSite(int groups, int plans_each);
