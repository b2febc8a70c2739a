#pragma once

namespace TarnPlanView {

/// Of a panel's last searches so many are kept.
constexpr int kMostLastSearches = 10;

}  // namespace TarnPlanView
