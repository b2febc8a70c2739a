#pragma once

// What a plan, a group or their names may have at most.
namespace view_plugin_protocol {

/// The most filled windows of a plan, on all its pages together.
constexpr int kMaxFilledWindows = 128;
/// The most pages of a plan that is edited. The service keeps more.
constexpr int kMaxPages = 64;
/// How long a page may stay.
constexpr int kMaxDwellSeconds = 24 * 60 * 60;
/// The most characters of a name, counted as Qt counts them.
constexpr int kLongestName = 256;
/// The deepest level that a group is made on; a root has level 1.
constexpr int kDeepestLevel = 6;

}  // namespace view_plugin_protocol
