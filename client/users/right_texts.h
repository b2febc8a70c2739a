#pragma once

#include <QString>
#include <set>
#include <vector>

namespace TarnClient {

/// The codes of all rights, in the order in which they are shown.
std::vector<int> AllRights();
/// For who gives it.
QString TextOfRight(int code);
/// Several, shortly.
QString ShortTextOf(const std::set<int>& rights);

}  // namespace TarnClient
